/** sonivo-peaks SONG [KEEP-AS]: writes the song's waveform and cover to standard output
    (player/pictures/song_picture.h) and to the cache file KEEP-AS, with the cover as an image file next to it.
    sonivo-peaks --tags: answers questions about tags (player/pictures/tag_talk.h).
    sonivo-peaks --sound SONG [FROM-MS TO-MS]: writes the spectrogram of a part of the song, or of all of it with its
    onsets, to standard output (songsound/sound_bytes.h).
    This process opens files and writes the cache; decoding is done by a sandboxed child process per song
    (confined/confined_work.h). */

#include "common/song_cache.h"
#include "player/peaks/read_song.h"
#include "player/peaks/read_sound.h"
#include "player/peaks/read_tags.h"
#include "player/pictures/picture_cache.h"

extern "C" {
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <sys/resource.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdio>
#include <string_view>

namespace {
constexpr size_t kLargestPiece = 256 << 20;
constexpr uintmax_t kCacheBytes = 64 << 20;
constexpr int kBackground = 19; // the lowest priority
constexpr int kAwaited = 5;     // a user waits for the result, but playback comes first

void step_back(int niceness) {
  setpriority(PRIO_PROCESS, 0, niceness);
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  av_log_set_level(AV_LOG_QUIET);
  av_max_alloc(kLargestPiece);
}

bool write_output(const std::string& bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
}

bool write_song(const std::string& song, const std::string& keepAs) {
  const TSongFile file = open_song(song);
  if (!file.sound) return false;
  const TSeenSong seen = read_song_confined(file);
  if (seen.picture.loudness.empty() && seen.picture.cover.empty()) return false;
  const std::string bytes = picture_bytes(seen.picture);
  if (!keepAs.empty()) {
    if (!seen.coverJpeg.empty()) keep_cached(cover_file_beside(keepAs), seen.coverJpeg, kCacheBytes);
    keep_cached(keepAs, bytes, kCacheBytes);
  }
  return write_output(bytes);
}

std::optional<int32> milliseconds(std::string_view digits) {
  int32 number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool isNumber = error == std::errc() && end == digits.data() + digits.size() && number >= 0;
  return isNumber ? std::optional(number) : std::nullopt;
}

bool write_sound(const std::string& song, std::string_view from, std::string_view to) {
  const auto fromMs = milliseconds(from);
  const auto toMs = milliseconds(to);
  const TSongFile file = open_song(song);
  if (!fromMs || !toMs || !file.sound) return false;
  const auto bytes = read_sound_confined(file, *fromMs, std::min(*toMs, *fromMs + kLongestPartMs));
  return bytes && write_output(*bytes);
}

bool write_whole_sound(const std::string& song) {
  const TSongFile file = open_song(song);
  const auto bytes = file.sound ? read_sound_confined(file, 0, INT_MAX) : std::nullopt;
  return bytes && write_output(*bytes);
}

int usage() {
  std::fputs("Usage: sonivo-peaks SONG [KEEP-AS]\n       sonivo-peaks --tags\n"
             "       sonivo-peaks --sound SONG [FROM-MS TO-MS]\n",
             stderr);
  return 2;
}

} // namespace

int main(int argc, char** argv) {
  const bool isSound = argc > 1 && std::string_view(argv[1]) == "--sound";
  if (isSound ? argc != 3 && argc != 5 : argc != 2 && argc != 3) return usage();
  step_back(isSound ? kAwaited : kBackground);
  if (isSound) return (argc == 5 ? write_sound(argv[2], argv[3], argv[4]) : write_whole_sound(argv[2])) ? 0 : 1;
  const bool isDone =
      std::string_view(argv[1]) == "--tags" ? answer_questions() : write_song(argv[1], argc == 3 ? argv[2] : "");
  return isDone ? 0 : 1;
}
