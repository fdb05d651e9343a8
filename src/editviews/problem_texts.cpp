#include "editviews/problem_texts.h"

#include "language/llt.h"

std::string problem_sign(TLineProblem problem) {
  switch (problem) {
  case TLineProblem::kBackwards:
    return "!";
  case TLineProblem::kSameTime:
    return "=";
  case TLineProblem::kLongGap:
    return "…";
  case TLineProblem::kNone:
    break;
  }
  return {};
}

std::string problem_text(const TFoundProblem& found) {
  constexpr int32 kMsPerSecond = 1000;
  const std::string key = "Label_Problem_" + std::to_string(static_cast<int32>(found.problem));
  const std::string text = gLLT->Text(key.c_str());
  return found.problem == TLineProblem::kLongGap ? text + std::to_string(found.gapMs / kMsPerSecond) + " s" : text;
}
