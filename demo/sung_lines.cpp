#include "demo/sung_lines.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace {

/** Independent of the editor's own parser, which is being tested. */
TSavedLine parse(const std::string& line) {
  int minutes = 0, seconds = 0, hundredths = 0, length = 0;
  if (std::sscanf(line.c_str(), "[%2d:%2d:%2d]%n", &minutes, &seconds, &hundredths, &length) != 3 || length != 10)
    return {std::nullopt, line};
  return {minutes * 60'000L + seconds * 1000L + hundredths * 10L, line.substr(10)};
}

} // namespace

std::vector<TSungLine> read_true_times(const std::string& path) {
  std::vector<TSungLine> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const size_t tab = line.find('\t');
    if (tab != std::string::npos) lines.push_back({std::stol(line.substr(0, tab)), line.substr(tab + 1)});
  }
  if (lines.empty()) throw std::runtime_error("no times in " + path);
  return lines;
}

std::vector<TSavedLine> read_saved_lines(const std::string& path) {
  std::vector<TSavedLine> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) lines.push_back(parse(line));
  if (!lines.empty() && lines.back().text == std::string(1, '\0')) lines.pop_back(); // terminates a saved text
  return lines;
}
