#pragma once

#include <string>
#include <string_view>

struct entry_ref;

/** Lyrics have some hundred lines. Each line costs memory in the document, its history, the controls on the screen and
    the display, however few bytes it has in the file; so files are limited by lines as well as by bytes. */

/** More are refused. */
inline constexpr long kMostLines = 500000;
/** What that many empty lines cost a player with the editor, in free edit mode, and the display: measured, 360 MB. */
inline constexpr long kMostLinesMB = 400;

/** True when reading lyrics from the bytes, which a NUL ends, would make more lines than that. Any thread. */
bool has_too_many_lines(std::string_view bytes);
/** False also for a file that cannot be read. Any thread. */
bool has_too_many_lines(const entry_ref& file);
