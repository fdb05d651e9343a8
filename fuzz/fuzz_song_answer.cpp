#include "fuzz/fuzz.h"
#include "songtags/song_lyrics.h"

/** The answer of vesmo-songtags: only accepted if it is exactly what would be written. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string given = text_of(bytes, size);
  const auto lyrics = parse_song_lyrics(given);
  if (!lyrics) return 0;
  require(song_lyrics_bytes(*lyrics) == given);
  static_cast<void>(best_lyrics(*lyrics));
  return 0;
}
