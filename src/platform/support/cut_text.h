#pragma once

#include <cstddef>
#include <string_view>

/** Titles, names and status lines from outside are truncated to this many bytes as they enter: laying out a text of
    megabytes would block the display thread for seconds. */
inline constexpr size_t kLongestText = 1024;

/** The start of a UTF-8 text: at most that many bytes, truncated at a character boundary. */
inline std::string_view cut_text(std::string_view text, size_t mostBytes = kLongestText) {
  if (text.size() <= mostBytes) return text;
  size_t end = mostBytes;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return text.substr(0, end);
}
