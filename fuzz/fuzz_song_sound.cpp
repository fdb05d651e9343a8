#include "fuzz/fuzz.h"
#include "songsound/sound_bytes.h"

/** What a helper program or the cache gives is accepted only if it is exactly what would be written. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string given = text_of(bytes, size);
  if (const auto sound = parse_sound(given)) {
    require(sound_bytes(*sound) == given);
    require(unpack_sound(packed_sound(*sound)) == sound);
  }
  if (const auto kept = unpack_sound(given)) require(parse_sound(sound_bytes(*kept)) == kept);
  return 0;
}
