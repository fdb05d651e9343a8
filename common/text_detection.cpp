#include "common/text_detection.h"

#include <algorithm>
#include <cstring>

namespace koreva {

namespace {

bool is_continuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

/** How many bytes a lead byte announces after itself: its leading one-bits beyond the first. */
int following_bytes(unsigned char lead) {
  int ones = 0;
  for (unsigned bit = 0x80; bit != 0 && (lead & bit) != 0; bit >>= 1) ++ones;
  return ones > 0 ? ones - 1 : 0;
}

} // namespace

long detect_cr_type(const char* text) {
  const char* const end = text + std::strlen(text);
  const auto lf = std::count(text, end, '\n');
  const auto cr = std::count(text, end, '\r');
  if (cr == lf) return cr != 0 ? 1 : 0;
  return cr > lf ? 2 : 0;
}

long detect_charset(const char* text) {
  constexpr char kEscape = 0x1B;
  bool hasEscape = false;
  bool hasFault = false;
  const auto* at = reinterpret_cast<const unsigned char*>(text);
  while (*at != '\0') {
    const unsigned char lead = *at++;
    hasEscape |= lead == kEscape;
    if (lead < 0x80) continue;
    hasFault |= lead < 0xC0;
    for (int left = following_bytes(lead); left > 0; --left, ++at) {
      if (*at == '\0') return hasEscape ? 2 : 1;
      hasFault |= !is_continuation(*at);
    }
  }
  return hasEscape ? 2 : (hasFault ? 1 : 0);
}

} // namespace koreva
