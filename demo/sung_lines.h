#pragma once

#include <optional>
#include <string>
#include <vector>

/** A line of the song with the moment its voice begins. */
struct TSungLine {
  long trueMs;
  std::string text;
};

/** Reads demo.times: milliseconds, a tab, the line. Throws std::runtime_error if there is none. */
std::vector<TSungLine> read_true_times(const std::string& path);

/** A line of the saved lyrics: its extended tag, if it has one, and the text behind it. */
struct TSavedLine {
  std::optional<long> tagMs;
  std::string text;
};

/** The NUL that the editor writes behind a UTF-8 text is no line. */
std::vector<TSavedLine> read_saved_lines(const std::string& path);
