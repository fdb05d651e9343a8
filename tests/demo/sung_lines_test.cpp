#include "demo/sung_lines.h"

#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

namespace {

struct SungLines : testing::Test {
  std::string Written(const std::string& text) { return fFolder.Write("lines", text); }
  ScratchFolder fFolder;
};

TEST_F(SungLines, OnlyAWholeExtendedTagCounts) {
  const auto lines = read_saved_lines(Written("[01:02:03]いろは\n[01:02]standard\nplain\n[00:05:7]short\n"));
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[0].tagMs, 62030);
  EXPECT_EQ(lines[0].text, "いろは");
  for (size_t i = 1; i < lines.size(); ++i) EXPECT_FALSE(lines[i].tagMs) << lines[i].text;
  EXPECT_EQ(lines[2].text, "plain");
}

TEST_F(SungLines, TheNulAfterTheTextIsNoLine) {
  using namespace std::string_literals;
  EXPECT_EQ(read_saved_lines(Written("[00:01:02]a\n[00:02:03]b\n\0"s)).size(), 2U);
  EXPECT_EQ(read_saved_lines(Written("[00:01:02]a\n[00:02:03]b"s)).size(), 2U);
}

TEST_F(SungLines, TrueTimesKeepTheTextAfterTheTabAndAreNeverEmpty) {
  const auto lines = read_true_times(Written("5736\tWho has seen the wind?\n8604\tNeither I nor you:\n"));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[1].trueMs, 8604);
  EXPECT_EQ(lines[1].text, "Neither I nor you:");
  EXPECT_THROW(read_true_times(Written("no tab here\n")), std::runtime_error);
}

} // namespace
