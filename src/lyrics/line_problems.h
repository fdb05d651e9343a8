#pragma once

#include "platform/support/types.h"

#include <optional>
#include <string>

class TLineTimes;

/** What is probably wrong with the time of a line, compared with that of the tagged line above. Lines with several tags
    are sung several times, so they are not compared. Any thread that may read the times. */

/** The numbers are those of the texts "Label_Problem_". */
enum class TLineProblem { kNone = 0, kBackwards = 1, kSameTime = 2, kLongGap = 3 };

struct TFoundProblem {
  TLineProblem problem = TLineProblem::kNone;
  int32 gapMs = 0; // since the tagged line above
};

TFoundProblem problem_at(const TLineTimes& times, int32 row);
/** The nearest row below or above `row` that has a problem. */
std::optional<int32> nearest_problem(const TLineTimes& times, int32 row, bool below);

/** A line with words but without a time tag. Headers such as `[ar:name]` need none. */
bool lacks_tag(const std::string& line);
