#include "fuzz/fuzz.h"
#include "player/m3u.h"

#include <algorithm>

/** What the player keeps of a list it finds again the next time, song by song. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const TSongs songs = parse_m3u(text_of(bytes, size), "/music/lists");
  const auto samePath = [](const TSong& one, const TSong& other) { return one.path == other.path; };
  for (const char* folder : {"", "/music/lists", "/music"}) {
    const TSongs again = parse_m3u(m3u_text(songs, folder), folder[0] != '\0' ? folder : "/");
    require(std::ranges::equal(songs, again, samePath));
  }
  return 0;
}
