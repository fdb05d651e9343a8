#include "player/model/song_tags.h"

#include <charconv>

int32 track_number(std::string_view tag) {
  int32 number = 0;
  const auto [end, error] = std::from_chars(tag.data(), tag.data() + tag.size(), number);
  const bool isAlone = end == tag.data() + tag.size() || *end == '/';
  return error == std::errc() && isAlone && number > 0 && number <= kHighestTrack ? number : 0;
}
