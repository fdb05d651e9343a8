/** The estimate of another player's position, for accurate, coarse and wrong players. */

#include "player/bus/shared_position.h"
#include "tests/support/testing.h"

namespace {

constexpr bigtime_t kSecond = 1000000;
constexpr bigtime_t kStartUs = 5000 * kSecond; // the clock has run before
constexpr int64 kDuration = 600 * kSecond;

/** The position that the player reports, given the true one. */
using TReported = std::function<double(bigtime_t sinceStartUs, double trueUs)>;

/** Updated every `periodUs` only. */
TReported updated_every(int64 periodUs) {
  return [=](bigtime_t, double trueUs) {
    return std::floor(trueUs / static_cast<double>(periodUs)) * static_cast<double>(periodUs);
  };
}

/** Polls a player for a while when the estimate asks for it, over a bus with latency. */
struct TSession {
  explicit TSession(double rate = 1) : fRate(rate) {
    fEstimate.SetDuration(kDuration);
    fEstimate.SetRate(kStartUs, rate);
    fEstimate.SetPlaying(kStartUs, true);
    fEstimate.Begin(kStartUs, 0);
  }

  void Listen(bigtime_t us, const TReported& reported) {
    std::uniform_int_distribution<bigtime_t> delay(100, 900);
    const bigtime_t end = fNowUs + us;
    while (fNowUs < end) {
      const bigtime_t asked = fNowUs = std::max(fNowUs + 1, fEstimate.NextQuestionUs(fNowUs));
      const bool isSlow = fSlowEvery > 0 && fQuestions % fSlowEvery == 1;
      const bigtime_t there = asked + (isSlow ? 200000 : delay(fRandom));
      fNowUs = there + delay(fRandom);
      ++fQuestions;
      fEstimate.Take({asked, fNowUs, std::llround(reported(there - kStartUs, TrueUs(there)))});
    }
  }
  double TrueUs(bigtime_t nowUs) const {
    return fJumpedUs + fRate * fTrueSpeed * static_cast<double>(nowUs - kStartUs);
  }
  double ErrorMs() const { return (static_cast<double>(fEstimate.PositionUs(fNowUs)) - TrueUs(fNowUs)) / 1000; }

  TPositionEstimate fEstimate;
  bigtime_t fNowUs = kStartUs;
  double fJumpedUs = 0;
  double fTrueSpeed = 1; // relative to the reported rate
  int fQuestions = 0;
  int fSlowEvery = 0; // so many questions, one takes 200 ms to get there

private:
  const double fRate;
  std::minstd_rand fRandom{7};
};

} // namespace

TEST(PositionEstimate, PlayersThatUpdateTheirPositionSeldomAreFollowed) {
  const std::tuple<const char*, int64, double, double, double> kPlayers[] = {
      {"a running clock", 1, 1, 2, 1},         {"every 41 ms", 41000, 1, 10, 6},
      {"every 250 ms", 250700, 1, 12, 7},      {"whole seconds", 1000000, 1, 1000, 9},
      {"41 ms, half speed", 41000, 0.5, 6, 4}, {"250 ms, double speed", 250000, 2, 20, 14},
  };
  for (const auto& [name, periodUs, rate, within2sMs, laterMs] : kPlayers) {
    TSession session(rate);
    session.fJumpedUs = 30 * kSecond; // it has played before it was chosen
    session.Listen(2 * kSecond, updated_every(periodUs));
    EXPECT_NEAR(session.ErrorMs(), 0, within2sMs) << name;
    session.Listen(13 * kSecond, updated_every(periodUs));
    session.fQuestions = 0;
    for (int second = 0; second < 20; ++second) {
      session.Listen(kSecond, updated_every(periodUs));
      EXPECT_NEAR(session.ErrorMs(), 0, laterMs) << name << ", second " << second;
    }
    EXPECT_LT(session.fQuestions, 20 * 40) << name;
  }
}

TEST(PositionEstimate, AnUnannouncedSeekIsFollowedAndASingleWrongAnswerIsNot) {
  TSession session;
  session.Listen(5 * kSecond, updated_every(41000));
  session.fJumpedUs += 60 * kSecond;
  session.Listen(2 * kSecond, updated_every(41000));
  EXPECT_NEAR(session.ErrorMs(), 0, 20) << "ahead";
  session.fJumpedUs -= 40 * kSecond;
  session.Listen(2 * kSecond, updated_every(41000));
  EXPECT_NEAR(session.ErrorMs(), 0, 20) << "back";
  session.Listen(8 * kSecond, updated_every(41000));
  session.fJumpedUs -= 0.2 * kSecond;
  session.Listen(6 * kSecond, updated_every(41000));
  EXPECT_NEAR(session.ErrorMs(), 0, 20) << "back a little";

  int answers = 0;
  for (int second = 0; second < 10; ++second) {
    session.Listen(kSecond, [&](bigtime_t, double trueUs) { return ++answers % 7 ? trueUs : 0.0; });
    EXPECT_NEAR(session.ErrorMs(), 0, 20) << "every seventh answer is 0";
  }
}

TEST(PositionEstimate, SlowAnswersAndASingleOutlierAreNotBelieved) {
  TSession slow;
  slow.fSlowEvery = 4;
  TSession outlier;
  outlier.Listen(8 * kSecond, updated_every(41000));
  int answers = 0;
  for (int second = 0; second < 30; ++second) {
    slow.Listen(kSecond, updated_every(1));
    EXPECT_NEAR(slow.ErrorMs(), 0, 10) << "a quarter of the answers took 200 ms, second " << second;
    const double aheadUs = second % 15 == 0 ? 200000 : 0;
    answers = 0;
    outlier.Listen(kSecond, [&](bigtime_t sinceUs, double trueUs) {
      return updated_every(41000)(sinceUs, trueUs) + (answers++ == 0 ? aheadUs : 0);
    });
    EXPECT_NEAR(outlier.ErrorMs(), 0, 20) << "one line of eight is far ahead, second " << second;
  }
}

TEST(SharedPosition, TheOtherPlayerIsPolledFromTheFirstReadOn) {
  TSharedPosition position;
  int wakes = 0;
  position.OnNeed([&] { ++wakes; });
  EXPECT_EQ(position.NextQuestionUs(), -1) << "nothing reads the position";
  position.Change([](TPositionEstimate& estimate) { estimate.Begin(0, 7000000); });
  EXPECT_EQ(position.PositionMs(), 7000);
  position.PositionMs();
  EXPECT_EQ(wakes, 1);
  EXPECT_GT(position.NextQuestionUs(), 0);
}

TEST(PositionEstimate, ALiarsClockIsHeldToItsAnswers) {
  TSession stuck;
  stuck.Listen(4 * kSecond, [](bigtime_t, double) { return 12.0 * kSecond; });
  EXPECT_EQ(stuck.fEstimate.PositionUs(stuck.fNowUs), 12 * kSecond)
      << "it reports to be playing, but its position does not change";
  stuck.fJumpedUs = 12.0 * kSecond - stuck.TrueUs(stuck.fNowUs);
  stuck.Listen(2 * kSecond, updated_every(41000));
  EXPECT_NEAR(stuck.ErrorMs(), 0, 20) << "and moves on";

  TSession slow;
  slow.fTrueSpeed = 0.95;
  for (int second = 0; second < 20; ++second) {
    slow.Listen(kSecond, updated_every(41000));
    EXPECT_NEAR(slow.ErrorMs(), 0, 500) << "slower than it says";
  }

  TSession late;
  late.Listen(5 * kSecond, [](bigtime_t, double) { return 2.0 * kDuration; });
  EXPECT_EQ(late.fEstimate.PositionUs(late.fNowUs), kDuration) << "after the end";
  late.Listen(5 * kSecond, [](bigtime_t, double) { return -3.0 * kSecond; });
  EXPECT_EQ(late.fEstimate.PositionUs(late.fNowUs), 0) << "before the beginning";
}

TEST(PositionEstimate, WhatThePlayerAnnouncesCountsAtOnce) {
  TPositionEstimate estimate;
  estimate.Begin(kStartUs, 7 * kSecond);
  EXPECT_EQ(estimate.PositionUs(kStartUs + kSecond), 7 * kSecond) << "paused";
  EXPECT_GE(estimate.NextQuestionUs(kStartUs), kStartUs + kSecond) << "hardly asked while paused";
  estimate.SetPlaying(kStartUs, true);
  EXPECT_EQ(estimate.PositionUs(kStartUs + kSecond), 8 * kSecond) << "no answer is waited for";
  estimate.SetRate(kStartUs + kSecond, 0.5);
  EXPECT_EQ(estimate.PositionUs(kStartUs + 3 * kSecond), 9 * kSecond);
  estimate.Begin(kStartUs + 3 * kSecond, 60 * kSecond + kSecond / 2);
  estimate.SetPlaying(kStartUs + 5 * kSecond, false);
  const bigtime_t laterUs = kStartUs + 9 * kSecond;
  EXPECT_EQ(estimate.PositionUs(laterUs), 61 * kSecond + kSecond / 2);
  estimate.Take({laterUs, laterUs, 61 * kSecond});
  EXPECT_EQ(estimate.PositionUs(laterUs), 61 * kSecond + kSecond / 2) << "whole seconds: this one began a while ago";
  estimate.Take({kStartUs + 4 * kSecond, laterUs, 20 * kSecond});
  EXPECT_EQ(estimate.PositionUs(laterUs), 61 * kSecond + kSecond / 2) << "asked before it was paused";
  estimate.Take({laterUs, laterUs, 20 * kSecond});
  EXPECT_EQ(estimate.PositionUs(laterUs), 20 * kSecond);
}
