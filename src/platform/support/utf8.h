#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/** Decoding of UTF-8 that may hold any bytes. All functions read only what they are given. Pure: any thread. */

inline constexpr char32_t kMalformedUtf8 = 0xFFFFFFFF;

struct Utf8Character {
  /** The code point, or kMalformedUtf8. */
  char32_t code;
  /** In bytes, at least 1. A malformed sequence ends before the first byte that cannot belong to it. */
  size_t length;

  bool IsValid() const { return code != kMalformedUtf8; }
};

constexpr bool is_utf8_continuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/** The character at the start of a text that is not empty. Overlong forms, surrogates and code points above U+10FFFF
    are malformed. */
inline Utf8Character first_character(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return {lead, 1};
  if (lead < 0xC2 || lead > 0xF4) return {kMalformedUtf8, 1};
  const size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  char32_t code = lead & (0x7FU >> length);
  for (size_t i = 1; i < length; ++i) {
    if (i >= text.size() || !is_utf8_continuation(text[i])) return {kMalformedUtf8, i};
    code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  const bool isOverlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool isNoCharacter = code > 0x10FFFF || (code >= 0xD800 && code < 0xE000);
  return {isOverlong || isNoCharacter ? kMalformedUtf8 : code, length};
}

/** The number of ASCII bytes at the start, found eight at a time. */
inline size_t ascii_length(std::string_view text) {
  constexpr uint64_t kTopBits = 0x8080808080808080;
  size_t length = 0;
  for (; text.size() - length >= sizeof kTopBits; length += sizeof kTopBits) {
    uint64_t word = 0;
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & kTopBits) != 0) break;
  }
  while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
  return length;
}

/** The start of the text: at most that many bytes, truncated at a character boundary. */
inline std::string_view truncated_utf8(std::string_view text, size_t maxBytes) {
  size_t end = std::min(text.size(), maxBytes);
  for (int left = 3; left > 0 && end > 0 && end < text.size() && is_utf8_continuation(text[end]); --left) --end;
  return text.substr(0, end);
}
