#include "demo/locate_sound.h"

#include "bench/audio_signal.h"
#include "tests/support/testing.h"

namespace {

constexpr size_t kShift = 4321;

/** The track as a recording that began `kShift` samples into it, quieter and with other sound mixed in. */
std::vector<float> recording(const std::vector<float>& track) {
  std::vector<float> heard(track.begin() + kShift, track.end());
  for (size_t i = 0; i < heard.size(); ++i)
    heard[i] = 0.3F * heard[i] + 0.01F * static_cast<float>(std::sin(0.05 * static_cast<double>(i)));
  return heard;
}

double second_of(size_t sample) {
  return static_cast<double>(sample) / kSignalRate;
}

TEST(LocateSound, FindsQuietAndDisturbedSoundToTheSample) {
  const auto track = timed_noise(2);
  const auto heard = recording(track);
  for (const size_t middle : {2000U, 30000U, 60000U}) {
    const auto place = locate(track, heard, middle, {second_of(middle), 0.2, 1024});
    ASSERT_TRUE(place);
    EXPECT_DOUBLE_EQ(place->seconds, second_of(middle + kShift));
    EXPECT_GT(place->likeness, 0.9);
  }
}

TEST(LocateSound, SoundThatIsNotInTheTrackIsUnlikeIt) {
  const auto track = timed_noise(2);
  const auto longer = timed_noise(4);
  const std::vector<float> other(longer.begin() + 3 * kSignalRate, longer.end());
  const auto place = locate(track, other, 20000, {1, 0.5, 1024});
  ASSERT_TRUE(place);
  EXPECT_LT(place->likeness, 0.5);
}

TEST(LocateSound, SilenceAndWindowsOutsideTheRecordingHaveNoPlace) {
  const auto track = timed_noise(2);
  EXPECT_FALSE(locate(track, std::vector<float>(track.size()), 20000, {1, 0.5, 1024}));
  for (const size_t middle : {size_t{100}, track.size() - 100})
    EXPECT_FALSE(locate(track, track, middle, {1, 0.5, 1024}));
}

} // namespace
