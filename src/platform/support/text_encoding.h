#pragma once

#include "platform/support/types.h"

#include <cstddef>

/** Converter numbers of the encodings. */
enum : uint32 {
  B_SJIS_CONVERSION = 11,   // Shift-JIS as files use it: code page 932
  B_JIS_CONVERSION = 13,    // ISO-2022-JP with half-width kana
  B_UNICODE_CONVERSION = 15 // UTF-8: the marker only, never converted
};

/** Convert between UTF-8 and another encoding. Each takes the whole of `source` or what fits into `destination`
    (whole characters only), and stores the bytes taken and made in the two lengths. What cannot be converted becomes
   one `substitute`, per broken piece or character. In JIS the text begins and ends in ASCII, and every line end returns
   to it. B_BAD_VALUE, and nothing touched, for an encoding they do not know. Any thread. */
status_t convert_to_utf8(uint32 sourceEncoding, const char* source, size_t* sourceLength, char* destination,
                         size_t* destinationLength, char substitute = 0x1A);
status_t convert_from_utf8(uint32 destinationEncoding, const char* source, size_t* sourceLength, char* destination,
                           size_t* destinationLength, char substitute = 0x1A);

/** Room enough for any text of that many bytes, whatever it holds. */
inline constexpr size_t worst_case_from_utf8(size_t utf8Length) {
  return utf8Length * 4 + 8;
}
