#pragma once

#include "platform/support/types.h"

#include <cstddef>

/** Converter numbers of the encodings. */
enum : uint32 {
  B_SJIS_CONVERSION = 11,   // Shift-JIS as files use it: code page 932
  B_JIS_CONVERSION = 13,    // ISO-2022-JP with half-width kana
  B_UNICODE_CONVERSION = 15 // UTF-8: only names the encoding, never converted
};

/** Convert between UTF-8 and another encoding. They convert as many whole characters as fit into `destination` and
    store the number of bytes read and written in the two lengths. Each malformed sequence and each character that the
    encoding lacks becomes one `substitute`. JIS text begins and ends in ASCII, and returns to it at every line end.
    B_BAD_VALUE, with nothing changed, for an unknown encoding. Thread-safe. */
[[nodiscard]] status_t convert_to_utf8(uint32 sourceEncoding, const char* source, size_t* sourceLength,
                                       char* destination, size_t* destinationLength, char substitute = 0x1A);
[[nodiscard]] status_t convert_from_utf8(uint32 destinationEncoding, const char* source, size_t* sourceLength,
                                         char* destination, size_t* destinationLength, char substitute = 0x1A);

/** Upper bound of the converted size. */
inline constexpr size_t worst_case_from_utf8(size_t utf8Length) {
  return utf8Length * 4 + 8;
}
