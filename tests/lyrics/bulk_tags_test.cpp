#include "lyrics/bulk_tags.h"

#include "tests/support/testing.h"

using testing::ElementsAre;
using Lines = std::list<std::string>;

TEST(ShiftTimeTags, RoundsTheAmountByEachLinesOwnForm) {
  const auto shifted = [](long amount) {
    Lines lines{"[00:10]a", "[00:10:00]b", "plain"};
    shift_time_tags(&lines, amount);
    return lines;
  };
  EXPECT_THAT(shifted(1499), ElementsAre("[00:11]a", "[00:11:50]b", "plain"));
  EXPECT_THAT(shifted(1500), ElementsAre("[00:12]a", "[00:11:50]b", "plain"));
  EXPECT_THAT(shifted(1234), ElementsAre("[00:11]a", "[00:11:23]b", "plain"));
  EXPECT_THAT(shifted(-4), ElementsAre("[00:10]a", "[00:10:00]b", "plain"));
  EXPECT_THAT(shifted(-5), ElementsAre("[00:10]a", "[00:09:99]b", "plain"));
  EXPECT_THAT(shifted(-500), ElementsAre("[00:09]a", "[00:09:50]b", "plain"));
}

TEST(ShiftTimeTags, StopsAtBothEndsWhateverTheAmount) {
  for (const long amount : {-20000L, -2147483647L, -9223372036854775807L - 1}) {
    Lines lines{"[00:10]a", "[Chorus]"};
    shift_time_tags(&lines, amount);
    EXPECT_THAT(lines, ElementsAre("[00:00]a", "[00:00]")) << amount;
  }
  Lines lines{"[00:10:00]a"};
  shift_time_tags(&lines, 9223372036854775807L);
  EXPECT_THAT(lines, ElementsAre("[99:59:99]a"));
}

TEST(ShiftTimeTags, OfZeroStillRewritesOddTags) {
  Lines lines{"[00:75]a", "[Chorus]b"};
  shift_time_tags(&lines, 0);
  EXPECT_THAT(lines, ElementsAre("[01:15]a", "[00:00]b"));
}

TEST(ConvertTimeTags, RoundsHalfSecondsUpAndKeepsTheRest) {
  Lines lines{"[00:10:49]a", "[00:10:50]b", "[01:59:50]c", "[99:59:99]d", "[00:10]e", "f"};
  convert_time_tags(&lines, false);
  EXPECT_THAT(lines, ElementsAre("[00:10]a", "[00:11]b", "[02:00]c", "[99:59]d", "[00:10]e", "f"));
  convert_time_tags(&lines, true);
  EXPECT_THAT(lines, ElementsAre("[00:10:00]a", "[00:11:00]b", "[02:00:00]c", "[99:59:00]d", "[00:10:00]e", "f"));
}

TEST(DeleteTimeTags, TakesTheFirstBracketOffEveryLine) {
  Lines lines{"[00:01]a", "[Chorus]", "[00:01][00:02]b", "c"};
  delete_time_tags(&lines);
  EXPECT_THAT(lines, ElementsAre("a", "", "[00:02]b", "c"));
}
