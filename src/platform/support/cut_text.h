#pragma once

#include "platform/support/utf8.h"

/** Titles, names and status lines from outside are truncated to this many bytes as they enter: laying out a text of
    megabytes would block the display thread for seconds. */
inline constexpr size_t kLongestText = 1024;

inline std::string_view cut_text(std::string_view text, size_t maxBytes = kLongestText) {
  return truncated_utf8(text, maxBytes);
}
