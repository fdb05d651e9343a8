#pragma once

#include <list>
#include <optional>
#include <string>
#include <vector>

/** A line taken apart at its well-formed time tags. Pure: any thread. */
struct TTaggedLine {
  struct TWord {
    std::optional<long> timeMs; // of the tag in front of it
    std::string text;
  };
  std::vector<long> timesMs; // of the tags at its start (line_times.h); empty for a line without
  std::vector<TWord> words;  // the rest, cut in front of each tag within it
  std::optional<long> endMs; // of a tag behind everything

  /** Without any tags. */
  std::string Text() const;
  bool HasTimedWords() const;
};

TTaggedLine take_apart(const std::string& line);

/** What is sung from one moment to another. */
struct TCue {
  long startMs = 0;
  long endMs = 0;
  std::string text; // lines without a tag of their own follow after line feeds
};

/** In the order of their times. A cue lasts until its line's own end, else until the next tag; what is sung at one
    moment is one cue. Counts the lines with words that come before every tag. */
std::vector<TCue> cues_of(const std::list<std::string>& lines, long* linesLeftOut);
