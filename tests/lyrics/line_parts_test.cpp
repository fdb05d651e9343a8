#include "lyrics/line_parts.h"

#include <gtest/gtest.h>

TEST(LineParts, KeepsTheFirstTagsAndSeparatesWordsWhereTheScriptDoes) {
  const struct {
    std::list<std::string> lines;
    const char* joined;
  } rows[] = {
      {{"[00:01:00]one", "[00:02:00]two"}, "[00:01:00]one two"},
      {{"one", "[00:02:00]two", "three"}, "[00:02:00]one two three"},
      {{"[00:01:00][00:31:00]one ", "two"}, "[00:01:00][00:31:00]one two"},
      {{"one", "", "two"}, "one two"},
      {{"[00:01]夜に", "[00:02]駆ける"}, "[00:01]夜に駆ける"},
      {{"사랑", "해요"}, "사랑 해요"},
      {{"夜", "\x93two"}, "夜\x93two"},
      {{"[Chorus]one", "[Chorus]two"}, "[Chorus]one [Chorus]two"},
  };
  for (const auto& row : rows) EXPECT_EQ(joined_lines(row.lines), row.joined);
}

TEST(LineParts, TextIsSplitWithoutBlanksAndTheFirstHalfKeepsTheTags) {
  EXPECT_EQ(split_line("[00:01]", "one ", " two"), (std::list<std::string>{"[00:01]one", "two"}));
  EXPECT_EQ(split_line("", "one", ""), (std::list<std::string>{"one", ""}));
  EXPECT_EQ(split_line("", "  ", "one"), (std::list<std::string>{"", "one"}));
  const std::pair<const char*, const char*> rows[] = {
      {"one two three", "one two"}, {"a bbbbbb", "a"}, {"bbbbbb a", "bbbbbb"}, {"夜に駆ける", "夜に駆ける"}, {"", ""}};
  for (const auto& [text, half] : rows) EXPECT_EQ(first_half(text), half);
}
