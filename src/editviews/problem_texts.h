#pragma once

#include "lyrics/line_problems.h"

#include <string>

/** How a problem of a line is shown in its row: a sign of one character. */
std::string problem_sign(TLineProblem problem);
/** The same in words, in the user's language. */
std::string problem_text(const TFoundProblem& found);
