/** sonivo-peaks SONG [KEEP-AS]: writes what can be seen of the song to standard output (player/peaks/song_picture.h),
   and into a file of the cache, the cover beside it as a picture of its own. A program of its own, so that a broken
   file ends no more than this. */

#include "player/peaks/picture_cache.h"
#include "player/peaks/read_song.h"

extern "C" {
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <sys/resource.h>

#include <cstdio>

namespace {
constexpr size_t kLargestPiece = 256 << 20;
constexpr rlim_t kLongestSeconds = 300;
constexpr uintmax_t kCacheBytes = 64 << 20;
} // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fputs("Usage: sonivo-peaks SONG [KEEP-AS]\n", stderr);
    return 2;
  }
  setpriority(PRIO_PROCESS, 0, 19);
  const rlimit seconds{kLongestSeconds, kLongestSeconds};
  setrlimit(RLIMIT_CPU, &seconds);
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  av_log_set_level(AV_LOG_QUIET);
  av_max_alloc(kLargestPiece);
  const TSeenSong seen = read_song(argv[1]);
  if (seen.picture.loudness.empty() && seen.picture.cover.empty()) return 1;
  const std::string bytes = picture_bytes(seen.picture);
  if (argc == 3) {
    if (!seen.coverJpeg.empty()) keep_picture(cover_file_beside(argv[2]), seen.coverJpeg, kCacheBytes);
    keep_picture(argv[2], bytes, kCacheBytes);
  }
  return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0 ? 0 : 1;
}
