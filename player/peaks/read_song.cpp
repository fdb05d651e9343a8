#include "player/peaks/read_song.h"

#include "player/peaks/cover.h"
#include "player/peaks/loudness.h"

TSongPicture read_song_picture(const std::string& path) {
  TSongPicture picture;
  const TInput input = open_input(path);
  if (!input) return picture;
  if (!read_cover(input.get(), &picture)) read_cover_beside(path, &picture);
  picture.loudness = read_loudness(input.get());
  return picture;
}
