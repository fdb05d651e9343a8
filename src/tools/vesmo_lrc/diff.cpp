#include "tools/vesmo_lrc/diff.h"

#include "tools/vesmo_lrc/report.h"

#include <algorithm>
#include <vector>

namespace {

constexpr size_t kContext = 3;

/** The lines (from 0) of one hunk. */
struct THunk {
  size_t begin;
  size_t end;
};

using TTexts = std::vector<const std::string*>;

TTexts pointers_to(const std::list<std::string>& lines) {
  TTexts texts;
  for (const std::string& line : lines) texts.push_back(&line);
  return texts;
}

/** Changed lines with their context; adjacent hunks are merged. */
std::vector<THunk> hunks_of(const TTexts& old, const TTexts& made) {
  std::vector<THunk> hunks;
  for (size_t i = 0; i < old.size(); ++i) {
    if (*old[i] == *made[i]) continue;
    const size_t begin = i < kContext ? 0 : i - kContext;
    const size_t end = std::min(i + kContext + 1, old.size());
    if (!hunks.empty() && begin <= hunks.back().end) {
      hunks.back().end = end;
    } else {
      hunks.push_back({begin, end});
    }
  }
  return hunks;
}

void append_line(char sign, const std::string& line, std::string* text) {
  *text += sign + printable(line) + "\n";
}

/** For each run of changed lines, first the old ones, then the new ones. */
void append_hunk(const TTexts& old, const TTexts& made, const THunk& hunk, std::string* text) {
  const std::string range = std::to_string(hunk.begin + 1) + "," + std::to_string(hunk.end - hunk.begin);
  *text += "@@ -" + range + " +" + range + " @@\n";
  for (size_t at = hunk.begin; at < hunk.end;) {
    size_t end = at;
    while (end < hunk.end && *old[end] != *made[end]) ++end;
    for (size_t i = at; i < end; ++i) append_line('-', *old[i], text);
    for (size_t i = at; i < end; ++i) append_line('+', *made[i], text);
    if (end == at) append_line(' ', *old[end++], text);
    at = end;
  }
}

} // namespace

std::string unified_diff(const std::string& name, const std::list<std::string>& old,
                         const std::list<std::string>& made) {
  const TTexts oldTexts = pointers_to(old);
  const TTexts madeTexts = pointers_to(made);
  const std::vector<THunk> hunks = hunks_of(oldTexts, madeTexts);
  if (hunks.empty()) return {};
  std::string text = "--- " + printable(name) + "\n+++ " + printable(name) + "\n";
  for (const THunk& hunk : hunks) append_hunk(oldTexts, madeTexts, hunk, &text);
  return text;
}
