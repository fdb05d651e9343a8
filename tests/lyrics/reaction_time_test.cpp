#include "lyrics/reaction_time.h"

#include <gtest/gtest.h>

namespace {

constexpr size_t kLeast = 5;

std::vector<int64> clicks() {
  std::vector<int64> moments;
  for (int64 i = 0; i < 16; ++i) moments.push_back(1000 + i * 750);
  return moments;
}

/** Each line stamped, then moved by as much. */
std::optional<int32> finding_after(TStampCorrections* corrections, const std::vector<int32>& movesMs,
                                   int32 offsetMs = 0, int64 laterMs = 3000) {
  static int32 line = 0; // another one each time
  std::optional<int32> found;
  for (const int32 moveMs : movesMs) {
    const int32 tagMs = 10000 + 2000 * line;
    corrections->Stamped(line, tagMs, tagMs, offsetMs);
    corrections->Moved(line++, tagMs + moveMs, tagMs + laterMs);
    if (const auto now = corrections->NewFinding()) found = now;
  }
  return found;
}

} // namespace

TEST(TypicalLateness, IsTheMiddleOfWhatAgrees) {
  EXPECT_EQ(typical_lateness({80, 90, 100, 85, 95}, kLeast), 90);
  EXPECT_EQ(typical_lateness({80, 90, 100, 85, 95, 700, -600}, kLeast), 90) << "two were slips";
  EXPECT_EQ(typical_lateness({-40, -40, -40, -40, -40}, kLeast), -40);
  EXPECT_EQ(typical_lateness({90, 91, 92, 93}, kLeast), std::nullopt) << "too few";
  EXPECT_EQ(typical_lateness({90, 91, 92, 93, 900}, kLeast), std::nullopt) << "too few without the slip";
  EXPECT_EQ(typical_lateness({-300, 300, -200, 200, -100, 100, 0, 250}, kLeast), std::nullopt) << "no agreement";
  EXPECT_EQ(typical_lateness({}, 0), std::nullopt);
}

TEST(TappedLateness, IgnoresTheFirstClicksDoublePressesAndMissedOnes) {
  std::vector<int64> taps;
  const auto beat = clicks();
  for (size_t i = 0; i < beat.size(); ++i) {
    if (i == 7) continue;
    taps.push_back(beat[i] + (i < 4 ? 300 - static_cast<int64>(i) * 50 : 60 + static_cast<int64>(i % 3) * 5));
    if (i == 9) taps.push_back(taps.back() + 120);
  }
  EXPECT_EQ(tapped_lateness(beat, taps), 65);
  EXPECT_EQ(tapped_lateness(beat, std::span(taps).first(8)), std::nullopt) << "given up half way";
  EXPECT_EQ(tapped_lateness(beat, std::span(taps).first(9)), std::nullopt) << "five clicks";
  EXPECT_TRUE(tapped_lateness(beat, std::span(taps).first(11))) << "six, of which one was pressed twice";
  EXPECT_EQ(tapped_lateness({}, taps), std::nullopt);
}

TEST(StampCorrections, SixThatAgreeAreReportedOnceAndAgainWhenTheyChange) {
  TStampCorrections corrections;
  EXPECT_EQ(finding_after(&corrections, {-130, -140, -150, -140, -150}), std::nullopt) << "too few";
  EXPECT_EQ(finding_after(&corrections, {-140}), 140);
  EXPECT_EQ(finding_after(&corrections, {-140, -130, -150}), std::nullopt) << "known already";
  EXPECT_EQ(finding_after(&corrections, std::vector<int32>(16, -200)), 200);
}

TEST(StampCorrections, StepsOfOneLineAreOneCorrectionAndSoIsARetake) {
  TStampCorrections corrections;
  for (int32 line = 0; line < 6; ++line) {
    const int32 tagMs = 5000 + 1000 * line;
    corrections.Stamped(line, tagMs, tagMs, 0);
    if (line % 2 == 0) {
      for (int32 step = 10; step <= 100; step += 10) corrections.Moved(line, tagMs - step, tagMs + 500 + step);
    } else {
      corrections.Stamped(line, tagMs - 100, tagMs + 4000, 0);
    }
  }
  EXPECT_EQ(corrections.NewFinding(), 100);
}

TEST(StampCorrections, TheLastOfMoreThanAreKeptCanStillBeMovedAgain) {
  TStampCorrections corrections;
  finding_after(&corrections, std::vector<int32>(9, -100));
  EXPECT_EQ(finding_after(&corrections, std::vector<int32>(7, -160)), std::nullopt) << "nine to seven";
  corrections.Stamped(5000, 20000, 20000, 0);
  corrections.Moved(5000, 20000 - 160, 20100);
  EXPECT_EQ(corrections.NewFinding(), 160) << "eight to eight: the first one was dropped";
  corrections.Moved(5000, 20000 - 100, 20200);
  EXPECT_EQ(corrections.NewFinding(), 100);
}

TEST(StampCorrections, LearnsNothingFromLateLargeOrSmallOnesNorFromBeforeAnotherOffset) {
  TStampCorrections corrections;
  EXPECT_EQ(finding_after(&corrections, std::vector<int32>(8, -1500)), std::nullopt) << "a line put elsewhere";
  EXPECT_EQ(finding_after(&corrections, std::vector<int32>(8, -140), 0, 600000), std::nullopt) << "a change of mind";
  EXPECT_EQ(finding_after(&corrections, std::vector<int32>(8, -20)), std::nullopt) << "not worth telling";
  for (const int32 offsetMs : {-20, -30})
    EXPECT_EQ(finding_after(&corrections, std::vector<int32>(5, -140), offsetMs), std::nullopt) << "starts over";
  for (int32 line = 50; line < 60; ++line) corrections.Stamped(line, 1140, 1000, -20);
  corrections.ForgetLines();
  for (int32 line = 50; line < 60; ++line) corrections.Moved(line, 1000, 1000);
  EXPECT_EQ(corrections.NewFinding(), std::nullopt) << "lines of another document";
}
