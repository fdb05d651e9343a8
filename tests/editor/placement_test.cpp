#include "window/placement.h"

#include <gtest/gtest.h>

namespace {
constexpr BRect kScreen{0, 0, 1279, 799};
}

TEST(FrameBeside, TakesTheSideWithRoom) {
  EXPECT_EQ(frame_beside({60, 80, 500, 480}, 560, 400, kScreen), (BRect{508, 80, 1068, 480}));
  EXPECT_EQ(frame_beside({700, 80, 1200, 480}, 560, 400, kScreen), (BRect{132, 80, 692, 480}));
  EXPECT_EQ(frame_beside({300, 80, 1000, 480}, 560, 400, kScreen), (BRect{300, 80, 860, 480}));
}

TEST(FrameBeside, StaysWhollyOnTheScreen) {
  EXPECT_EQ(frame_beside({60, 700, 500, 1100}, 560, 400, kScreen), (BRect{508, 399, 1068, 799}));
  EXPECT_EQ(frame_beside({-500, -50, 100, 480}, 560, 400, kScreen), (BRect{108, 0, 668, 400}));
  EXPECT_EQ(frame_beside({0, 0, 100, 100}, 5000, 5000, kScreen).LeftTop(), (BPoint{0, 0}));
}
