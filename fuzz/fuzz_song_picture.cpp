#include "fuzz/fuzz.h"
#include "player/pictures/song_picture.h"

/** A cache file with any content is accepted only if it is exactly what would be written. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string given = text_of(bytes, size);
  const auto picture = parse_picture(given);
  if (picture) require(picture_bytes(*picture) == given);
  return 0;
}
