#pragma once

#include <string>
#include <string_view>

struct entry_ref;

/** Limit on the number of lines of a file, in addition to its size: each line costs memory in the document, the
    controls and the display, however short it is. Lyrics have a few hundred lines. */

/** Files with more lines are refused. */
inline constexpr long kMostLines = 500000;
/** Memory for that many empty lines, in the player with editor (free edit mode) and display: 360 MB measured. */
inline constexpr long kMostLinesMB = 400;

/** True when the bytes, up to a NUL, have more than kMostLines lines. Any thread. */
bool has_too_many_lines(std::string_view bytes);
/** False for a file that cannot be read. Any thread. */
bool has_too_many_lines(const entry_ref& file);
