#pragma once

#include <optional>
#include <string>
#include <vector>

/** A line of the song and the time its vocals start. */
struct TSungLine {
  long trueMs;
  std::string text;
};

/** Reads demo.times: milliseconds, a tab, the line. Throws std::runtime_error if there is none. */
std::vector<TSungLine> read_true_times(const std::string& path);

/** A line of the saved lyrics: its extended tag, if any, and the text after it. */
struct TSavedLine {
  std::optional<long> tagMs;
  std::string text;
};

/** The NUL that the editor appends to UTF-8 text does not count as a line. */
std::vector<TSavedLine> read_saved_lines(const std::string& path);
