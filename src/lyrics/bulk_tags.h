#pragma once

#include <list>
#include <string>

/** Commands over every line of a document. A line is tagged when `time_tag_to_time` says so, `[Chorus]` included.
    Pure: any thread. */

/** Moves every tag by `offsetMs`, rounded to the resolution of each line's own form, halves away from zero. */
void shift_time_tags(std::list<std::string>* lines, long offsetMs);

/** Prints every tag in the wanted form; to the standard form the seconds are rounded half up. */
void convert_time_tags(std::list<std::string>* lines, bool toExtended);

/** Takes the leading bracket off every line that has one. */
void delete_time_tags(std::list<std::string>* lines);
