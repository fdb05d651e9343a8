#include "bench/audio_errors.h"

#include "bench/audio_signal.h"
#include "tests/support/testing.h"

namespace {

constexpr int64_t kStartUs = 5'000'000;
constexpr double kMistakeMs = 7;

/** Answers of a source that is always ahead of the sound by kMistakeMs, playing from the track's start. */
std::vector<TProbe> mistaken_probes(double seconds) {
  std::vector<TProbe> probes;
  for (double at = 0.2; at < seconds; at += 0.0311)
    probes.push_back({kStartUs + std::llround(at * 1e6), at + kMistakeMs / 1000});
  return probes;
}

void expect_mistake_found(const TErrors& errors) {
  ASSERT_GT(errors.ms.size(), 20U);
  EXPECT_EQ(errors.lost, 0U);
  EXPECT_NEAR(errors.ms.front(), kMistakeMs, 0.2);
  EXPECT_NEAR(errors.ms.back(), kMistakeMs, 0.2);
}

TEST(AudioErrors, NoiseAndClicksMeasureHowFarAheadTheSourceIs) {
  expect_mistake_found(noise_errors(mistaken_probes(1), {timed_noise(2), kStartUs}, false));
  expect_mistake_found(click_errors(mistaken_probes(8), {click_track(9), kStartUs}, 1));
}

TEST(AudioErrors, APositionInAPauseIsComparedWithTheLastSound) {
  auto heard = timed_noise(3);
  std::fill(heard.begin() + kSignalRate, heard.end(), 0.0F); // the sound stops after a second
  const TErrors errors = noise_errors({{kStartUs + 1'300'000, 1 + kMistakeMs / 1000, true}}, {heard, kStartUs}, false);
  ASSERT_EQ(errors.ms.size(), 1U);
  EXPECT_NEAR(errors.ms[0], kMistakeMs, 0.2);
}

TEST(AudioErrors, ProbesWithoutSoundAreCountedAsLost) {
  const auto probes = mistaken_probes(1);
  EXPECT_EQ(noise_errors(probes, {std::vector<float>(2 * kSignalRate), kStartUs}, false).lost, probes.size());
}

} // namespace
