#include "common/text_detection.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace koreva {

namespace {

/** From one find to the next: line ends are far apart, and the library's search is far quicker than a look at each
    byte. */
long count_bytes(std::string_view text, char byte) {
  long count = 0;
  for (size_t at = text.find(byte); at != std::string_view::npos; at = text.find(byte, at + 1)) ++count;
  return count;
}

bool is_continuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

/** How many bytes a lead byte announces after itself: its leading one-bits beyond the first. */
int following_bytes(unsigned char lead) {
  int ones = 0;
  for (unsigned bit = 0x80; bit != 0 && (lead & bit) != 0; bit >>= 1) ++ones;
  return ones > 0 ? ones - 1 : 0;
}

/** Where the run of ASCII that begins at `at` ends. */
const unsigned char* ascii_end(const unsigned char* at, const unsigned char* end) {
  constexpr std::uint64_t kTopBits = 0x8080808080808080;
  for (; end - at >= 8; at += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    if ((word & kTopBits) != 0) break;
  }
  while (at != end && *at < 0x80) ++at;
  return at;
}

} // namespace

long detect_cr_type(const char* text) {
  const std::string_view whole = text;
  const long lf = count_bytes(whole, '\n');
  const long cr = count_bytes(whole, '\r');
  if (cr == lf) return cr != 0 ? 1 : 0;
  return cr > lf ? 2 : 0;
}

long detect_charset(const char* text) {
  constexpr char kEscape = 0x1B;
  const auto* at = reinterpret_cast<const unsigned char*>(text);
  const unsigned char* const end = at + std::strlen(text);
  bool hasEscape = false;
  bool hasFault = false;
  while (at != end) {
    const unsigned char* const run = ascii_end(at, end);
    hasEscape = hasEscape || std::memchr(at, kEscape, static_cast<size_t>(run - at)) != nullptr;
    if ((at = run) == end) break;
    const unsigned char lead = *at++;
    hasFault |= lead < 0xC0;
    for (int left = following_bytes(lead); left > 0; --left, ++at) {
      if (at == end) return hasEscape ? 2 : 1;
      hasFault |= !is_continuation(*at);
    }
  }
  return hasEscape ? 2 : (hasFault ? 1 : 0);
}

} // namespace koreva
