/** sonivo-peaks SONG [KEEP-AS]: writes the song's waveform and cover to standard output
    (player/pictures/song_picture.h) and to the cache file KEEP-AS, with the cover as an image file next to it.
    sonivo-peaks --tags: answers questions about tags (player/pictures/tag_talk.h).
    This process opens files and writes the cache; decoding is done by a sandboxed child process per song
    (confined/confined_work.h). */

#include "player/peaks/read_song.h"
#include "player/peaks/read_tags.h"
#include "player/pictures/picture_cache.h"

extern "C" {
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <sys/resource.h>

#include <cstdio>
#include <string_view>

namespace {
constexpr size_t kLargestPiece = 256 << 20;
constexpr uintmax_t kCacheBytes = 64 << 20;

void step_back() {
  setpriority(PRIO_PROCESS, 0, 19);
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  av_log_set_level(AV_LOG_QUIET);
  av_max_alloc(kLargestPiece);
}

bool write_song(const std::string& song, const std::string& keepAs) {
  const TSongFile file = open_song(song);
  if (!file.sound) return false;
  const TSeenSong seen = read_song_confined(file);
  if (seen.picture.loudness.empty() && seen.picture.cover.empty()) return false;
  const std::string bytes = picture_bytes(seen.picture);
  if (!keepAs.empty()) {
    if (!seen.coverJpeg.empty()) keep_picture(cover_file_beside(keepAs), seen.coverJpeg, kCacheBytes);
    keep_picture(keepAs, bytes, kCacheBytes);
  }
  return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fputs("Usage: sonivo-peaks SONG [KEEP-AS]\n       sonivo-peaks --tags\n", stderr);
    return 2;
  }
  step_back();
  const bool isDone =
      std::string_view(argv[1]) == "--tags" ? answer_questions() : write_song(argv[1], argc == 3 ? argv[2] : "");
  return isDone ? 0 : 1;
}
