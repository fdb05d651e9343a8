/** vesmo-songtags read SONG: writes the lyrics inside the song to standard output (songtags/song_lyrics.h).
    vesmo-songtags write SONG STATE: writes the lyrics on standard input into the song, which must still be in the state
    in which it was read. The exit status is a TSongStatus. */

#include "songtags/helper/write_song.h"

#include <sys/resource.h>

#include <cstdio>
#include <string_view>

namespace {

TSongStatus read_command(const std::string& path) {
  TLyricsInSong lyrics;
  const TSongStatus status = read_song(path, &lyrics);
  if (status != TSongStatus::kDone) return status;
  const std::string bytes = song_lyrics_bytes(lyrics);
  const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
  return isWritten ? TSongStatus::kDone : TSongStatus::kFailed;
}

TSongStatus write_command(const std::string& path, const std::string& state) {
  std::string text(kMostLyricsBytes + 1, '\0');
  text.resize(std::fread(text.data(), 1, text.size(), stdin));
  if (text.empty() || text.size() > kMostLyricsBytes) return TSongStatus::kTooLarge;
  return write_song(path, state, text);
}

} // namespace

int main(int argc, char** argv) {
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  const std::string_view command = argc > 1 ? argv[1] : "";
  if (command == "read" && argc == 3) return static_cast<int>(read_command(argv[2]));
  if (command == "write" && argc == 4) return static_cast<int>(write_command(argv[2], argv[3]));
  std::fputs("Usage: vesmo-songtags read SONG\n       vesmo-songtags write SONG STATE <LYRICS\n", stderr);
  return 2;
}
