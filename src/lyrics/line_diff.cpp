#include "lyrics/line_diff.h"

#include <algorithm>

namespace {

/** More differing lines than this cost too much time and memory to be matched. */
constexpr int32 kMostEdits = 1000;

/** The part of two texts without the start and the end that they have in common. */
struct TMiddle {
  const std::vector<std::string>& before;
  const std::vector<std::string>& after;
  int32 first = 0; // in both
  int32 oldCount = 0;
  int32 newCount = 0;

  bool IsSame(int32 oldLine, int32 newLine) const {
    return before[static_cast<size_t>(first + oldLine)] == after[static_cast<size_t>(first + newLine)];
  }
};

TMiddle middle_of(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  const auto start = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto first = start.first - before.begin();
  const auto end = std::mismatch(before.rbegin(), before.rend() - first, after.rbegin(), after.rend() - first);
  const auto same = end.first - before.rbegin();
  return {before, after, static_cast<int32>(first), static_cast<int32>(std::ssize(before) - first - same),
          static_cast<int32>(std::ssize(after) - first - same)};
}

/** How far each diagonal (old line minus new line) reaches in the old text after a number of edits. */
class TReach {
public:
  explicit TReach(int32 edits) : fEdits(edits), fOldLines(static_cast<size_t>(2 * edits + 3)) {}
  int32& At(int32 diagonal) { return fOldLines[static_cast<size_t>(diagonal + fEdits + 1)]; }
  int32 At(int32 diagonal) const { return fOldLines[static_cast<size_t>(diagonal + fEdits + 1)]; }

private:
  int32 fEdits;
  std::vector<int32> fOldLines;
};

/** True when the next edit on the diagonal inserts a line rather than removing one. */
bool inserts(const TReach& reach, int32 diagonal, int32 edits) {
  return diagonal == -edits || (diagonal != edits && reach.At(diagonal - 1) < reach.At(diagonal + 1));
}

/** The states after 0, 1, 2 … edits, up to the one that reaches both ends; empty when it takes too many. */
std::vector<TReach> find_path(const TMiddle& middle) {
  std::vector<TReach> states;
  for (int32 edits = 0; edits <= kMostEdits; ++edits) {
    TReach next(edits);
    for (int32 diagonal = -edits; diagonal <= edits; diagonal += 2) {
      int32 oldLine = 0;
      if (edits > 0) {
        const TReach& last = states.back();
        oldLine = inserts(last, diagonal, edits) ? last.At(diagonal + 1) : last.At(diagonal - 1) + 1;
      }
      while (oldLine < middle.oldCount && oldLine - diagonal < middle.newCount &&
             middle.IsSame(oldLine, oldLine - diagonal))
        ++oldLine;
      next.At(diagonal) = oldLine;
      if (oldLine < middle.oldCount || oldLine - diagonal < middle.newCount) continue;
      states.push_back(std::move(next));
      return states;
    }
    states.push_back(std::move(next));
  }
  return {};
}

void add_edit(std::vector<TLineHunk>* hunks, const TLineHunk& edit) {
  TLineHunk* const last = hunks->empty() ? nullptr : &hunks->back();
  const bool joins = last && last->oldFirst == edit.oldFirst + edit.oldCount && // found from the end to the start
                     last->newFirst == edit.newFirst + edit.newCount;
  if (!joins) return hunks->push_back(edit);
  *last = {edit.oldFirst, last->oldCount + edit.oldCount, edit.newFirst, last->newCount + edit.newCount};
}

std::vector<TLineHunk> hunks_on_path(const TMiddle& middle, const std::vector<TReach>& states) {
  std::vector<TLineHunk> hunks;
  int32 diagonal = middle.oldCount - middle.newCount;
  for (auto edits = static_cast<int32>(states.size()) - 1; edits > 0; --edits) {
    const TReach& before = states[static_cast<size_t>(edits - 1)];
    const bool isInserted = inserts(before, diagonal, edits);
    diagonal += isInserted ? 1 : -1;
    const int32 oldLine = middle.first + before.At(diagonal);
    const int32 newLine = oldLine - diagonal;
    add_edit(&hunks, isInserted ? TLineHunk{oldLine, 0, newLine, 1} : TLineHunk{oldLine, 1, newLine, 0});
  }
  std::ranges::reverse(hunks);
  return hunks;
}

void append_lines(std::string* text, const std::vector<std::string>& lines, int32 first, int32 count, char sign,
                  int* left) {
  for (int32 i = first; i<first + count&& * left> 0; ++i, --*left)
    *text += std::to_string(i + 1) + "  " + sign + " " + lines[static_cast<size_t>(i)] + "\n";
}

} // namespace

std::vector<TLineHunk> line_diff(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  const TMiddle middle = middle_of(before, after);
  if (middle.oldCount == 0 && middle.newCount == 0) return {};
  const std::vector<TReach> states = find_path(middle);
  if (states.empty()) return {{middle.first, middle.oldCount, middle.first, middle.newCount}};
  return hunks_on_path(middle, states);
}

std::string diff_text(const std::vector<std::string>& before, const std::vector<std::string>& after, int maxLines) {
  std::string text;
  int left = maxLines;
  for (const TLineHunk& hunk : line_diff(before, after)) {
    if (left == 0) return text + "…\n";
    append_lines(&text, before, hunk.oldFirst, hunk.oldCount, '-', &left);
    append_lines(&text, after, hunk.newFirst, hunk.newCount, '+', &left);
  }
  return text;
}
