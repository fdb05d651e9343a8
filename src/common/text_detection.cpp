#include "common/text_detection.h"

#include "platform/support/utf8.h"

#include <bit>
#include <string_view>

namespace koreva {

namespace {

/** By repeated `find`, since line ends are far apart and `find` is much faster than a loop over all bytes. */
long count_bytes(std::string_view text, char byte) {
  long count = 0;
  for (size_t at = text.find(byte); at != std::string_view::npos; at = text.find(byte, at + 1)) ++count;
  return count;
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
  std::string_view left = text;
  bool hasEscape = false;
  bool isMalformed = false;
  while (!left.empty()) {
    const std::string_view ascii = left.substr(0, ascii_length(left));
    hasEscape = hasEscape || ascii.find(kEscape) != std::string_view::npos;
    left.remove_prefix(ascii.size());
    if (left.empty()) break;
    const auto lead = static_cast<unsigned char>(left.front());
    left.remove_prefix(1);
    isMalformed |= lead < 0xC0;
    // Required: the leading one-bits alone determine the length, also where no UTF-8 sequence is as long.
    for (int following = std::countl_one(lead) - 1; following > 0; --following) {
      if (left.empty()) return hasEscape ? 2 : 1;
      isMalformed |= !is_utf8_continuation(left.front());
      left.remove_prefix(1);
    }
  }
  return hasEscape ? 2 : (isMalformed ? 1 : 0);
}

} // namespace koreva
