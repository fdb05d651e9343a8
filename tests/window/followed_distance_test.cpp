#include "window/followed_distance.h"

#include <gtest/gtest.h>

namespace {

constexpr BPoint kStart{448, 0};
constexpr BRect kScreen{0, 0, 1279, 799};

/** The editor's window next to a player's at 0,0; the display's reports are made by hand. */
struct FollowedDistance : testing::Test {
  FollowedDistance() { fDistance.Set(kStart, Player()); }
  BRect Player() const { return {fPlayer.x, fPlayer.y, fPlayer.x + fSize.x, fPlayer.y + fSize.y}; }
  BPoint PlayerTo(BPoint place) {
    fPlayer = place;
    return fDistance.Follow(Player(), {0, 0, 560, 400}, kScreen);
  }
  BPoint PlayerOfSize(BPoint size) {
    fSize = size;
    return PlayerTo(fPlayer);
  }
  void Report(BPoint place, std::optional<BPoint> end) {
    if (fDistance.IsUsersMove(place, end)) fDistance.Set(place, Player());
  }
  /** The next move of the player shows it. */
  BPoint Kept() { return PlayerTo(fPlayer + BPoint{20, 10}) - fPlayer; }

  BPoint fPlayer;
  BPoint fSize{440, 480};
  TFollowedDistance fDistance;
};

} // namespace

TEST_F(FollowedDistance, FastDragsOfThePlayerLeaveItAsItIs) {
  const BPoint first = PlayerTo({60, 40});
  const BPoint second = PlayerTo({-20, 10});
  Report(first, std::nullopt); // late: the player has moved on already
  const BPoint third = PlayerTo({20, 40});
  Report(third, std::nullopt); // out of order
  Report(second, std::nullopt);
  Report({500, 20}, std::nullopt); // somewhere on the way
  Report(third, third);
  Report(third, third);
  EXPECT_EQ(Kept(), kStart);
}

TEST_F(FollowedDistance, UsersOwnMoveIsRememberedHoweverItIsReported) {
  const BPoint left = PlayerTo({100, 100});
  const BPoint usersOwn{408, 50};
  // Some window managers report a drag step by step, some only its end; and that may hide the end of following.
  for (const bool isReportedInSteps : {true, false}) {
    if (isReportedInSteps) {
      Report(left, left);
      Report(fPlayer + BPoint{430, 20}, left);
    }
    Report(fPlayer + usersOwn, left);
    EXPECT_EQ(Kept(), usersOwn) << isReportedInSteps;
  }
}

TEST_F(FollowedDistance, UserMayPutTheWindowBackWhereFollowingHadLeftIt) {
  const BPoint left = PlayerTo({100, 100});
  Report(left, left);
  Report(left + BPoint{30, 30}, left);
  Report(left, left);
  EXPECT_EQ(Kept(), kStart);
}

TEST_F(FollowedDistance, UserMovesTheWindowBeforeAnythingWasFollowed) {
  Report({300, 20}, BPoint{});
  EXPECT_EQ(Kept(), (BPoint{300, 20}));
}

TEST_F(FollowedDistance, EdgeOfTheScreenStopsTheWindowButNotTheUser) {
  const BPoint edge{719, 110};
  EXPECT_EQ(PlayerTo({400, 110}), (BPoint{848, 110}));
  Report({848, 110}, std::nullopt); // what Qt expects
  Report(edge, edge);
  EXPECT_EQ(PlayerTo({420, 110}), (BPoint{868, 110}));
  Report(edge, edge);
  EXPECT_EQ(PlayerTo({100, 110}), (BPoint{548, 110})) << "the distance is back where there is room";
  PlayerTo({400, 110});
  Report(edge, edge);
  Report({689, 110}, edge);
  EXPECT_EQ(Kept(), (BPoint{289, 0}));
}

TEST_F(FollowedDistance, EnlargedPlayerDoesNotSlideUnderTheWindowAndGivesItsPlaceBack) {
  EXPECT_EQ(PlayerOfSize({540, 600}), (BPoint{548, 0}));
  EXPECT_EQ(PlayerTo({20, 30}), (BPoint{568, 30})) << "moved while it is large";
  EXPECT_EQ(PlayerOfSize({1200, 700}), (BPoint{719, 30})) << "as far as the screen has room";
  EXPECT_EQ(PlayerOfSize({440, 480}), (BPoint{468, 30}));
  EXPECT_EQ(PlayerOfSize({400, 400}), (BPoint{468, 30})) << "a smaller one is no reason to move";
  PlayerOfSize({400, 300});
  fDistance.Set({20, 340}, Player()); // below it, if that is what the user prefers
  EXPECT_EQ(PlayerOfSize({440, 330}), (BPoint{20, 370}));
  fDistance.Set({100, 100}, Player()); // over it
  EXPECT_EQ(PlayerOfSize({600, 700}), (BPoint{100, 100}));
}

TEST_F(FollowedDistance, WindowManagerThatShiftsTheWindowByItsFrameDoesNotMakeItDrift) {
  for (int i = 1; i <= 3; ++i) {
    const BPoint sent = PlayerTo({10.0F * float(i), 0});
    Report(sent, std::nullopt);
    Report(sent + BPoint{5, 24}, sent + BPoint{5, 24});
  }
  EXPECT_EQ(Kept(), kStart);
}
