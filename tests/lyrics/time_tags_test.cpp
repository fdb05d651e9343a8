#include "lyrics/time_tags.h"

#include <gtest/gtest.h>

namespace {

constexpr std::tuple<const char*, bool, long, bool> kReads[] = {
    {"[01:02]", true, 62000, false},
    {"[01:02:03]", true, 62030, true},
    {"[99:59:99]", true, 5999990, true},
    {"[1:2]", false, -7, true},
    {"[01:02", false, -7, true},
    {"[01:02x", true, 62000, false},
    {"x[01:02]", false, -7, true},
    {" [01:02]", false, -7, true},
    {"[01:02]abc", true, 62000, false},
    {"[01:02]12abc", true, 62120, true},
    {"[01:02]1", true, 62000, false}, // 8 characters are too few for hundredths
    {"[0x:10]", true, 4330000, false},
    {"[Chorus]", true, 0, false},
    {"[ab:cd]", true, 0, false},
    {"[00:75]", true, 75000, false},
    {"[0\xff:10]", true, (-1 - '0') * 60000L + 10000, false},
    {"[\xff\xff:10]", true, 10000, false},
};

} // namespace

TEST(TimeTags, AreReadByPositionAlone) {
  for (const auto& [line, isTag, timeMs, isExtended] : kReads) {
    long time = -7;
    bool extended = true;
    EXPECT_EQ(time_tag_to_time(line, &time, &extended), isTag) << line;
    EXPECT_EQ(std::pair(time, extended), std::pair(timeMs, isExtended)) << line;
  }
}

TEST(TimeTags, ArePrintedBoundedAndCut) {
  const std::tuple<long, const char*, const char*> prints[] = {
      {-5, "[00:00]", "[00:00:00]"},      {5, "[00:00]", "[00:00:00]"},         {1239, "[00:01]", "[00:01:23]"},
      {59999, "[00:59]", "[00:59:99]"},   {60000, "[01:00]", "[01:00:00]"},     {5999990, "[99:59]", "[99:59:99]"},
      {6000000, "[99:59]", "[99:59:99]"}, {2147483647, "[99:59]", "[99:59:99]"}};
  for (const auto& [time, standard, extended] : prints) {
    std::string tag = "what was there before";
    EXPECT_TRUE(time_to_time_tag(time, &tag, false));
    EXPECT_EQ(tag, standard);
    EXPECT_TRUE(time_to_time_tag(time, &tag, true));
    EXPECT_EQ(tag, extended);
  }
}

TEST(TimeTags, AreTakenOffUpToTheFirstBracket) {
  const std::pair<const char*, const char*> removals[] = {
      {"[01:02]text", "text"}, {"text]", "text]"}, {"[abc", "[abc"}, {"[a]b]c", "b]c"},
      {"[1]x", "x"},           {"", ""},           {"]", "]"},       {"[00:01] [00:02]x", " [00:02]x"}};
  for (const auto& [before, after] : removals) {
    std::string line = before;
    remove_time_tag(&line);
    EXPECT_EQ(line, after);
  }
}

TEST(StripPrefix, KeepsWhatFollowsTheLaterMarker) {
  EXPECT_EQ(strip_prefix("03 - Title"), "Title");
  EXPECT_EQ(strip_prefix("abc"), "abc");
  EXPECT_EQ(strip_prefix("歌手・曲名"), "曲名");
  EXPECT_EQ(strip_prefix("a - b・c"), "c");
  EXPECT_EQ(strip_prefix("a・b - c"), "c");
  EXPECT_EQ(strip_prefix("ends-"), "");
  EXPECT_EQ(strip_prefix(""), "");
}
