#pragma once

#include <list>
#include <string>
#include <vector>

/** Commands on every line of a document. A line is tagged when `time_tag_to_time` says so, `[Chorus]` included.
    Pure: any thread. */

/** Moves every tag by `offsetMs`, rounded to the resolution of each line's own form, halves away from zero. */
void shift_time_tags(std::list<std::string>* lines, long offsetMs);

/** By how much that moves a tag with or without hundredths. */
long shift_step(long offsetMs, bool isExtended);

/** How many tags `shift_time_tags` would leave at 0, if it moves some of them past it: their distances are lost. 0 when
    fewer than two are. */
size_t count_tags_piled_at_zero(const std::vector<std::string>& lines, long offsetMs);

/** Rewrites every tag in the given form; for the standard form, seconds are rounded half up. */
void convert_time_tags(std::list<std::string>* lines, bool toExtended);

/** Removes the leading bracket of every line that has one. */
void delete_time_tags(std::list<std::string>* lines);
