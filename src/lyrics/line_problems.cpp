#include "lyrics/line_problems.h"

#include "lyrics/line_times.h"
#include "lyrics/tag_spans.h"

namespace {
/** An instrumental part is rarely longer. */
constexpr int32 kLongestGapMs = 30000;
} // namespace

TFoundProblem problem_at(const TLineTimes& times, int32 row) {
  const std::optional<int32> ownMs = times.OnlyTagOf(row);
  if (!ownMs) return {};
  std::optional<int32> aboveMs;
  for (int32 above = row - 1; above >= 0 && !aboveMs; --above) aboveMs = times.OnlyTagOf(above);
  if (!aboveMs) return {};
  const int32 gapMs = *ownMs - *aboveMs;
  if (gapMs < 0) return {TLineProblem::kBackwards, gapMs};
  if (gapMs == 0) return {TLineProblem::kSameTime, gapMs};
  return {gapMs > kLongestGapMs ? TLineProblem::kLongGap : TLineProblem::kNone, gapMs};
}

std::optional<int32> nearest_problem(const TLineTimes& times, int32 row, bool below) {
  const int32 step = below ? 1 : -1;
  for (int32 other = row + step; other >= 0 && other < times.CountRows(); other += step)
    if (problem_at(times, other).problem != TLineProblem::kNone) return other;
  return {};
}

bool lacks_tag(const std::string& line) {
  if (line.find_first_not_of(" \t\r") == std::string::npos) return false;
  const TBracketKind kind = bracket_kind(line);
  return kind != TBracketKind::kTimeTag && kind != TBracketKind::kHeader;
}
