#include "player/sound/heard_position.h"

#include <gtest/gtest.h>

namespace {

constexpr bigtime_t kMs = 1000;
bigtime_t gNowUs = 0;

/** A library that plays from `fFromMs` at fBeganUs on, and answers at once. */
struct HeardPosition : testing::Test {
  HeardPosition() {
    gNowUs = 100000 * kMs;
    fBeganUs = gNowUs;
  }
  int32 At(bigtime_t laterMs) {
    gNowUs += laterMs * kMs;
    return fHeard.Ms([this](uint64 id) {
      ++fAsked;
      gNowUs += fAnswerUs;
      const double ms = fFromMs + static_cast<double>(fIsPaused ? 0 : gNowUs - fBeganUs) / kMs;
      fHeard.Answer(id, fIsSilent ? std::nullopt : std::optional(ms / 1000));
      return true;
    });
  }
  /** How many of 40 questions within the next second reach the library. */
  int AskedInASecond() {
    const int before = fAsked;
    for (int i = 0; i < 40; ++i) At(25);
    return fAsked - before;
  }
  void PlayFrom(double ms) {
    fHeard.Begin(false);
    fHeard.Arrived();
    fFromMs = ms;
    fBeganUs = gNowUs;
  }

  THeardPosition fHeard{[] { return gNowUs; }};
  int fAsked = 0;
  double fFromMs = 0;
  bigtime_t fBeganUs;
  bigtime_t fAnswerUs = 0;
  bool fIsPaused = false;
  bool fIsSilent = false;
};

} // namespace

TEST_F(HeardPosition, IsExactWhileTheLibraryIsAskedSeldom) {
  PlayFrom(5000);
  EXPECT_GE(AskedInASecond(), 39) << "just begun";
  for (int i = 1; i <= 40; ++i) EXPECT_NEAR(At(25), 6000 + 25 * i, 1);
  EXPECT_LE(AskedInASecond(), 11);
  fFromMs += 3000; // the library jumped by itself
  At(91);
  EXPECT_NEAR(At(0), 8000 + (gNowUs - fBeganUs) / kMs, 1);
}

TEST_F(HeardPosition, IsAskedForEachTimeWhereItMayJump) {
  const struct {
    const char* what;
    std::function<void()> change;
  } cases[] = {
      {"a change of the sound", [this] { fHeard.Moves(); }},
      {"a repeated part", [this] { fHeard.SetHasRange(); }},
      {"slow answers", [this] { fAnswerUs = 3 * kMs; }},
      {"no sound", [this] { fIsSilent = true; }},
  };
  for (const auto& each : cases) {
    PlayFrom(5000);
    AskedInASecond();
    ASSERT_LE(AskedInASecond(), 11);
    each.change();
    At(91); // what is known by now is used up
    EXPECT_GE(AskedInASecond(), 35) << each.what;
    fAnswerUs = 0;
    fIsSilent = false;
  }
  PlayFrom(0);
  fHeard.SetHasRange();
  PlayFrom(0);
  AskedInASecond();
  EXPECT_LE(AskedInASecond(), 20) << "the range was one of the song before";
}

TEST_F(HeardPosition, IsTheExpectedOneUntilTheSongIsHeardFromThere) {
  PlayFrom(5000);
  AskedInASecond();
  AskedInASecond();
  fHeard.Expect(60000);
  EXPECT_EQ(At(10), 60000);
  EXPECT_EQ(At(989), 60000);
  EXPECT_NEAR(At(1), 8000, 1) << "the library never said so";
  fHeard.Expect(60000);
  fHeard.Arrived();
  EXPECT_NEAR(At(0), 8000, 1);
  fHeard.Expect(60000);
  fHeard.ExpectNothing();
  EXPECT_NEAR(At(0), 8000, 1);
  EXPECT_EQ(fHeard.Interrupted(7.5), 7500);
  EXPECT_EQ(At(500), 7500);
  fHeard.Expect(60000);
  EXPECT_EQ(fHeard.Interrupted(8), 60000) << "not heard from there yet";
  fIsSilent = true;
  fHeard.ExpectNothing();
  EXPECT_EQ(At(1000), 0);
}

TEST_F(HeardPosition, OfAPausedSongIsAskedForOnceItStandsStill) {
  PlayFrom(5000);
  fHeard.SetPaused(true);
  fIsPaused = true;
  AskedInASecond();
  EXPECT_EQ(At(1000), 5000);
  EXPECT_EQ(AskedInASecond(), 0);
  fHeard.Moves();
  fFromMs = 7000;
  EXPECT_EQ(At(0), 7000);
  EXPECT_GT(AskedInASecond(), 30);
}

TEST_F(HeardPosition, IsWithoutTheBiasOfTheSpeed) {
  PlayFrom(5000);
  fHeard.SetBias(40);
  EXPECT_EQ(At(0), 4960);
  EXPECT_EQ(fHeard.Ms({}), 4960) << "the library is not open";
  fHeard.BeginJoin();
  EXPECT_FALSE(fHeard.FollowerIsHeard(0.039));
  EXPECT_TRUE(fHeard.FollowerIsHeard(0.04));
  EXPECT_NEAR(fHeard.FinishJoin(), 4960, 1);
  fIsSilent = true;
  EXPECT_EQ(At(0), 0) << "the follower begins";
}
