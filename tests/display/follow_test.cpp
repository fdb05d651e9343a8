#include "platform/interface/follow.h"
#include "platform/interface/interface_defs.h"

#include <gtest/gtest.h>

TEST(FollowParent, EachSideStaysAtItsDistance) {
  struct Case {
    const char* name;
    uint32 mode;
    BRect expected;
  };
  const BRect frame{10, 20, 50, 60};
  const Case cases[] = {
      {"left top stays", B_FOLLOW_LEFT_TOP, {10, 20, 50, 60}},
      {"right bottom moves", B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, {40, 25, 80, 65}},
      {"both sides grow", B_FOLLOW_ALL_SIDES, {10, 20, 80, 65}},
      {"a bar at the bottom", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM, {10, 25, 80, 65}},
      {"no side at all stays", B_FOLLOW_NONE, {10, 20, 50, 60}},
  };
  for (const Case& each : cases)
    EXPECT_EQ(follow_parent(frame, each.mode, {100, 100}, {130, 105}), each.expected) << each.name;
}
