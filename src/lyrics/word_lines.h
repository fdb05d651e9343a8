#pragma once

#include "lyrics/tagged_text.h"

#include <list>
#include <string>
#include <vector>

/** Commands on the times within lines. A line's own tag is changed by bulk_tags.h. Pure: any thread. */

/** What bulk_tags.h does to the lines, with the times within them. */
void shift_tags_and_words(std::list<std::string>* lines, long offsetMs);
void convert_tags_and_words(std::list<std::string>* lines, bool toExtended);
void delete_tags_and_words(std::list<std::string>* lines);

/** `after` is `before` with another time in its own tag: the words are moved as far. */
std::string with_words_moved(const std::string& before, const std::string& after);

/** The line with its own tag only. */
std::string without_word_times(const std::string& line);
/** Without any time tag. */
std::string without_times(const std::string& line);

bool has_word_times(const std::string& line);

/** The line `to` with the word times of `from`, as far from its own tag as there; `to` unchanged unless both have a tag
    and the same text. */
std::string with_word_times_of(const std::string& from, const std::string& to);

/** Writes the times within the lines in that form. Returns true if thousandths were cut. */
bool write_words_as(TWordForm form, std::list<std::string>* lines);
