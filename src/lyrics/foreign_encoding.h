#pragma once

#include "lyrics/lyrics_form.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** Encodings beyond the three that lyrics are written in: files in them can be opened by a choice and are saved as they
    were. Converted by the C library (iconv). Thread-safe. */

struct TForeignEncoding {
  TEncoding encoding;
  const char* name; // on screen and for iconv
};
const std::vector<TForeignEncoding>& foreign_encodings();

/** Null for UTF-8, Shift-JIS and JIS. */
const char* foreign_name(TEncoding encoding);

/** The text in UTF-8; each byte that is not valid becomes 0x1A. Nothing if the C library lacks the encoding. */
std::optional<std::string> foreign_to_utf8(std::string_view bytes, TEncoding encoding);

/** Each character that the encoding lacks becomes 0x1A. Nothing if the C library lacks the encoding. */
std::optional<std::string> foreign_from_utf8(std::string_view text, TEncoding encoding);

/** What the bytes probably are in, if a foreign encoding: a heuristic (uchardet), by the first 256 KiB. */
std::optional<TEncoding> probable_foreign_encoding(std::string_view bytes);
