#include "player/peaks/read_song.h"

#include "player/peaks/cover.h"
#include "player/peaks/loudness.h"

TSeenSong read_song(const std::string& path) {
  TSeenSong seen;
  const TInput input = open_input(path);
  if (!input) return seen;
  if (const TFrame cover = read_cover(input.get(), path)) {
    draw_cover(cover.get(), &seen.picture);
    seen.coverJpeg = cover_jpeg(cover.get());
  }
  seen.picture.loudness = read_loudness(input.get());
  return seen;
}
