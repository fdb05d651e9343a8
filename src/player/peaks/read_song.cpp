#include "player/peaks/read_song.h"

#include "confined/confined_work.h"
#include "player/peaks/cover.h"
#include "player/peaks/loudness.h"

#include <algorithm>

namespace {

constexpr size_t kLargestJpeg = 4 << 20;
/** Generous in real time: at the lowest priority, a busy machine leaves little CPU time. */
constexpr TWorkLimits kLimits{.cpuSeconds = 300, .wallSeconds = 3600, .resultBytes = kLargestPicture + kLargestJpeg};

/** The serialized picture, whose header tells its size, followed by the JPEG. */
TSeenSong parse_seen_song(const std::string& bytes) {
  const size_t size = std::min(picture_size(bytes), bytes.size());
  const auto picture = parse_picture(std::string_view(bytes).substr(0, size));
  return picture ? TSeenSong{*picture, bytes.substr(size)} : TSeenSong();
}

} // namespace

TSeenSong read_song(const TSongFile& file) {
  TSeenSong seen;
  const TInput input = open_input(file.sound.Get(), file.name);
  if (!input) return seen;
  if (const TFrame cover = read_cover(input.get(), file.covers)) {
    draw_cover(cover.get(), &seen.picture);
    seen.coverJpeg = cover_jpeg(cover.get());
  }
  seen.picture.loudness = read_loudness(input.get());
  return seen;
}

TSeenSong read_song_confined(const TSongFile& file) {
  const auto bytes = confined_work(file.Descriptors(), kLimits, [&file] {
    const TSeenSong seen = read_song(file);
    return picture_bytes(seen.picture) + seen.coverJpeg;
  });
  return bytes ? parse_seen_song(*bytes) : TSeenSong();
}
