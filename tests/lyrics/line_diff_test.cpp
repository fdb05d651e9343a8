#include "lyrics/line_diff.h"

#include "tests/support/testing.h"

namespace {

using Lines = std::vector<std::string>;

/** The new text, made of the old one and the hunks. */
Lines applied(const Lines& before, const Lines& after, const std::vector<TLineHunk>& hunks) {
  Lines made;
  int32 at = 0;
  for (const TLineHunk& hunk : hunks) {
    made.insert(made.end(), before.begin() + at, before.begin() + hunk.oldFirst);
    EXPECT_EQ(std::ssize(made), hunk.newFirst);
    made.insert(made.end(), after.begin() + hunk.newFirst, after.begin() + hunk.newFirst + hunk.newCount);
    at = hunk.oldFirst + hunk.oldCount;
  }
  made.insert(made.end(), before.begin() + at, before.end());
  return made;
}

int32 edits_in(const std::vector<TLineHunk>& hunks) {
  int32 edits = 0;
  for (const TLineHunk& hunk : hunks) edits += hunk.oldCount + hunk.newCount;
  return edits;
}

/** By dynamic programming. */
int32 fewest_edits(const Lines& before, const Lines& after) {
  std::vector<int32> row(after.size() + 1);
  for (size_t j = 0; j <= after.size(); ++j) row[j] = static_cast<int32>(j);
  for (size_t i = 1; i <= before.size(); ++i) {
    int32 diagonal = std::exchange(row[0], static_cast<int32>(i));
    for (size_t j = 1; j <= after.size(); ++j) {
      const int32 above = row[j];
      row[j] = before[i - 1] == after[j - 1] ? diagonal : 1 + std::min(above, row[j - 1]);
      diagonal = above;
    }
  }
  return row.back();
}

} // namespace

TEST(LineDiff, TurnsOneTextIntoTheOtherWithTheFewestEdits) {
  std::mt19937 random(7); // NOLINT: the same cases in every run
  for (int round = 0; round < 2000; ++round) {
    const auto text = [&random] {
      Lines lines(random() % 12);
      for (std::string& line : lines) line = std::string(1, static_cast<char>('a' + random() % 3));
      return lines;
    };
    const Lines before = text();
    const Lines after = text();
    const std::vector<TLineHunk> hunks = line_diff(before, after);
    ASSERT_EQ(applied(before, after, hunks), after) << round;
    ASSERT_EQ(edits_in(hunks), fewest_edits(before, after)) << round;
  }
}

TEST(LineDiff, TextsThatDifferEverywhereHaveOneHunkBetweenTheirCommonEnds) {
  Lines before{"first"};
  Lines after{"first"};
  for (int i = 0; i < 3000; ++i) {
    before.push_back("old " + std::to_string(i));
    after.push_back("new " + std::to_string(i));
  }
  after.emplace_back("new");
  before.emplace_back("last");
  after.emplace_back("last");
  EXPECT_EQ(line_diff(before, after), (std::vector<TLineHunk>{{1, 3000, 1, 3001}}));
}

TEST(LineDiff, TextNamesTheLinesAndEndsWhereItWouldGetTooLong) {
  EXPECT_EQ(diff_text({"a", "b", "c"}, {"a", "x", "c", "d"}, 9), "2  - b\n2  + x\n4  + d\n");
  EXPECT_EQ(diff_text({"a", "b", "c"}, {"a", "x", "c", "d"}, 2), "2  - b\n2  + x\n…\n");
  EXPECT_EQ(diff_text({"a"}, {"a"}, 9), "");
}
