#pragma once

#include <list>
#include <string>
#include <vector>

/** Commands on every line of a document. A line is tagged when `time_tag_to_time` says so, `[Chorus]` included.
    Pure: any thread. */

/** Moves every tag by `offsetMs`, rounded to the resolution of each line's own form, halves away from zero. */
void shift_time_tags(std::list<std::string>* lines, long offsetMs);

/** How many tags `shift_time_tags` would set to the first or the last time that can be printed instead of moving them
    by the whole amount. */
size_t count_tags_out_of_range(const std::vector<std::string>& lines, long offsetMs);

/** Rewrites every tag in the given form; for the standard form, seconds are rounded half up. */
void convert_time_tags(std::list<std::string>* lines, bool toExtended);

/** Removes the leading bracket of every line that has one. */
void delete_time_tags(std::list<std::string>* lines);
