#pragma once

#include <list>
#include <optional>
#include <string>
#include <vector>

/** A line split at its well-formed time tags. Pure: any thread. */
struct TTaggedLine {
  struct TWord {
    std::optional<long> timeMs; // of the tag in front of it
    std::string text;
  };
  std::vector<long> timesMs; // of the tags at its start (line_times.h); empty without any
  std::vector<TWord> words;  // the rest, split before each tag
  std::optional<long> endMs; // of a tag at the very end

  /** The text without tags. */
  std::string Text() const;
  bool HasTimedWords() const;
};

TTaggedLine take_apart(const std::string& line);

/** What is sung from one moment to another. */
struct TCue {
  long startMs = 0;
  long endMs = 0;
  std::string text; // with the untagged lines that follow, after line feeds
};

/** Sorted by time. A cue lasts until its line's own end, else until the next tag; lines with the same time are one cue.
    `linesLeftOut` counts the lines with words before the first tag. */
std::vector<TCue> cues_of(const std::list<std::string>& lines, long* linesLeftOut);
