#pragma once

#include <string>

/** Reads and prints the two forms of time tag, `[mm:ss]` and `[mm:ss:cc]`. All tags are parsed and printed
    by these functions only. Pure: any thread. */

/** The largest time that can be printed, in ms. */
inline constexpr long kLastTagTime = 5999990;

/** Reads the tag at the start of `line`.
    On success stores the time (ms from the start of the song, may exceed kLastTagTime or be negative for odd tags) and
    whether it has hundredths; otherwise touches neither. Any line of 7 bytes or more that begins with '[' is a tag
    line, on purpose. */
bool time_tag_to_time(const std::string& line, long* time, bool* extended);

/** Replaces `tag` by the printed form of `time`, bounded to 0 … kLastTagTime; hundredths are cut, not rounded.
    Always true. */
bool time_to_time_tag(long time, std::string* tag, bool extended);

/** Removes everything up to the first ']' from a line that begins with '['; other lines do not change. */
void remove_time_tag(std::string* line);

/** The text after the first "- " or the first middle dot, whichever begins later; all of `text` without either. */
std::string strip_prefix(const std::string& text);
