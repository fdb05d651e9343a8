#include "lyrics/line_problems.h"

#include "lyrics/line_times.h"
#include "tests/support/testing.h"

TEST(LineProblems, TimesAreComparedWithTheTaggedLineAbove) {
  const std::vector<std::pair<const char*, TLineProblem>> kLines = {
      {"[ti:song]", TLineProblem::kNone},        {"[01:00:00]a", TLineProblem::kNone},
      {"no tag", TLineProblem::kNone},           {"[01:00:00]b", TLineProblem::kSameTime},
      {"[00:59:99]c", TLineProblem::kBackwards}, {"[01:29:99]d", TLineProblem::kNone},
      {"[02:00:00]e", TLineProblem::kLongGap},   {"[00:10:00][03:00:00]chorus", TLineProblem::kNone},
      {"[02:10]f", TLineProblem::kNone},
  };
  TLineTimes times;
  for (const auto& [line, problem] : kLines) times.Append(line);
  int32 row = 0;
  for (const auto& [line, problem] : kLines) EXPECT_EQ(problem_at(times, row++).problem, problem) << line;
  EXPECT_EQ(problem_at(times, 6).gapMs, 30010);
  EXPECT_EQ(nearest_problem(times, 0, true), 3);
  EXPECT_EQ(nearest_problem(times, 4, true), 6);
  EXPECT_EQ(nearest_problem(times, 6, false), 4);
  EXPECT_FALSE(nearest_problem(times, 6, true));
  EXPECT_FALSE(nearest_problem(times, 3, false));
  times.Change(4, "[01:00:01]c");
  EXPECT_FALSE(nearest_problem(times, 3, true) == 4);
}

TEST(LineProblems, OnlyLinesWithWordsNeedATag) {
  for (const char* line : {"words", "[Chorus]", "[00:1x]odd", " x"}) EXPECT_TRUE(lacks_tag(line)) << line;
  for (const char* line : {"", "  \t", "[00:10]x", "[00:10:00]", "[ar:name]"}) EXPECT_FALSE(lacks_tag(line)) << line;
}
