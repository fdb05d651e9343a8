#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/** Cuts the text of a line into the units that are timed one by one. Pure: any thread. */

/** Characters without width, by which the user's own cuts are kept in the text: the first joins what it is between, the
    second (zero width space) separates it. */
inline constexpr std::string_view kJoinMark = "\u2060";
inline constexpr std::string_view kSplitMark = "\u200b";

/** Where the units begin, in bytes; the first one begins at 0. Empty for a text of blanks only. Units are words between
    blanks; single Chinese and Japanese characters, with the small kana and the long vowel mark after them, and a small
    tsu with the one after it; in Korean, Thai, Lao, Khmer and Burmese what the ICU's word iterator finds. Punctuation
    and blanks belong to the unit before, opening marks to the one after. */
std::vector<size_t> unit_starts(std::string_view text);

bool is_blank_text(std::string_view text);

/** Where the characters as the user sees them (grapheme clusters) begin, in bytes, and the end of the
    text. */
std::vector<size_t> caret_stops(std::string_view text);

/** The text without join and split marks. */
std::string without_unit_marks(std::string_view text);
