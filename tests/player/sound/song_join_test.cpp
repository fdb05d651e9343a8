#include "player/sound/song_join.h"

#include <gtest/gtest.h>

TEST(SongJoin, UntilTheFollowerIsHeardThePositionIsOneOfTheEndingSong) {
  constexpr double kSpeed = 2;
  TSongJoin join;
  join.Heard(59600, 1000000);
  join.Begin();
  join.Heard(-80, 1000000); // of the follower already
  EXPECT_EQ(join.PositionMs({}, kSpeed, 1050000), 59700) << "before the library reports the follower";
  EXPECT_EQ(join.PositionMs(-200, kSpeed, 1100000), 59800);
  EXPECT_EQ(join.PositionMs(-150, kSpeed, 1100000), 59850) << "from the follower's position, not from the clock";
  EXPECT_EQ(join.PositionMs(3, kSpeed, 1300000), 60000) << "never beyond its end";
  EXPECT_EQ(join.Finish(kSpeed, 1300000), 60000);
  EXPECT_FALSE(join.IsPending());
  join.Begin(); // before anything was heard of the follower
  EXPECT_EQ(join.PositionMs({}, kSpeed, 1400000), 0);
  join.Finish(kSpeed, 1400000);
  join.Heard(29000, 2000000);
  join.Begin();
  EXPECT_EQ(join.PositionMs({}, kSpeed, 2100000), 29200);
  EXPECT_EQ(join.PositionMs({}, kSpeed, 99000000), 31000) << "the sound hangs";
}

TEST(SongJoin, AfterAJumpTheClockSaysNothing) {
  TSongJoin join;
  join.Heard(59000, 1000000);
  join.Jumped(59500);
  join.Begin();
  EXPECT_EQ(join.PositionMs({}, 1, 1900000), 59500);
  EXPECT_EQ(join.PositionMs(-100, 1, 1900000), 59500);
  EXPECT_EQ(join.Finish(1, 1900000), 59600);
}
