#pragma once

#include <list>
#include <string>

/** A line as the commands that join and split lines take it: its leading time tags, and the rest. Pure: any thread. */
struct TLineParts {
  std::string tags;
  std::string text;
};
TLineParts parts_of(const std::string& line);

/** One line from several, with the first one's time tags, or those of the first line that has any. Texts are separated
    by a blank, except in scripts that are written without. */
std::string joined_lines(const std::list<std::string>& lines);

/** Two lines from one text, without blanks where it is split; the first one has the tags. */
std::list<std::string> split_line(const std::string& tags, const std::string& before, const std::string& after);

/** The start of the text up to the blank nearest to its middle; all of it without one. */
std::string first_half(const std::string& text);
