/** sonivo-peaks SONG [KEEP-AS]: writes what can be seen of the song to standard output (player/peaks/song_picture.h),
   and into a file of the cache, the cover beside it as a picture of its own.
   sonivo-peaks --tags: tells what songs say of themselves, one after another (player/peaks/tag_talk.h).
   A program of its own, so that a broken file ends no more than this. */

#include "player/peaks/picture_cache.h"
#include "player/peaks/read_song.h"
#include "player/peaks/read_tags.h"

extern "C" {
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <sys/resource.h>

#include <cstdio>
#include <string_view>

namespace {
constexpr size_t kLargestPiece = 256 << 20;
constexpr rlim_t kLongestSeconds = 300;
constexpr uintmax_t kCacheBytes = 64 << 20;

void step_back() {
  setpriority(PRIO_PROCESS, 0, 19);
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  av_log_set_level(AV_LOG_QUIET);
  av_max_alloc(kLargestPiece);
}

bool write_song(const std::string& song, const std::string& keepAs) {
  const rlimit seconds{kLongestSeconds, kLongestSeconds};
  setrlimit(RLIMIT_CPU, &seconds);
  const TSeenSong seen = read_song(song);
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
