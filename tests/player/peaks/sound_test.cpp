/** The analysis of a song's sound: levels, times, onsets, and one part of it. */

#include "player/peaks/read_sound.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

namespace {

std::optional<TReadSound> sound_of(const std::string& path, int32 fromMs = 0, int32 toMs = INT_MAX) {
  const auto bytes = read_sound_confined(open_song(path), fromMs, toMs);
  return bytes ? parse_sound(*bytes) : std::nullopt;
}

size_t loudest_band(const TSoundPart& part, size_t column) {
  const auto first = part.levels.begin() + static_cast<std::ptrdiff_t>(column * kSoundBands);
  return static_cast<size_t>(std::max_element(first, first + kSoundBands) - first);
}

} // namespace

TEST(SongAnalysis, ATonesLevelBandAndStartAreThoseOfTheSong) {
  const ScratchFolder folder;
  const auto sound = sound_of(folder.Write("a.wav", beeping_wav(5)));
  ASSERT_TRUE(sound);
  EXPECT_EQ(sound->durationMs, 5000);
  ASSERT_EQ(sound->part.peaks.size(), 1000U);
  const size_t band = loudest_band(sound->part, 190); // 950 ms
  EXPECT_NEAR(static_cast<double>(band), 18, 1) << "1 kHz on the mel scale from 60 Hz to 11 kHz";
  EXPECT_NEAR(sound->part.levels[190 * kSoundBands + band], 239, 6) << "-6 dB of 96";
  EXPECT_EQ(sound->part.levels[150 * kSoundBands + band], 0);
  for (int32 second = 0; second < 4; ++second) {
    const int32 startMs = second * 1000 + 900;
    const auto isNear = [startMs](const TOnset& onset) { return std::abs(onset.timeMs - startMs) <= 5; };
    EXPECT_TRUE(std::ranges::any_of(sound->onsets, isNear)) << startMs;
  }
}

TEST(SongAnalysis, APartIsTheSameAsThatPartOfTheWhole) {
  const ScratchFolder folder;
  const std::string song = folder.Write("a.wav", beeping_wav(6));
  const auto whole = sound_of(song);
  const auto part = sound_of(song, 3503, 5000);
  ASSERT_TRUE(whole && part);
  EXPECT_FALSE(part->isWhole);
  EXPECT_EQ(part->part.fromMs, 3500);
  ASSERT_EQ(part->part.peaks.size(), 300U);
  for (size_t i = 0; i < 300; ++i) EXPECT_NEAR(part->part.peaks[i], whole->part.peaks[700 + i], 3) << i;
  const auto after = sound_of(song, 9000, 10000);
  EXPECT_TRUE(after && after->part.peaks.empty()) << "no error after the end";
}

TEST(SongAnalysis, APartOfASongWithAnEncodersDelayIsNotSeenEarlierThanInTheWhole) {
  const auto song = std::filesystem::path(PEAKS_PROGRAM).parent_path() / "../demo/demo.opus";
  const auto whole = sound_of(song);
  const auto part = sound_of(song, 20000, 22000);
  ASSERT_TRUE(whole && part);
  ASSERT_EQ(part->part.peaks.size(), 400U);
  for (size_t i = 0; i < 400; ++i) EXPECT_NEAR(part->part.peaks[i], whole->part.peaks[4000 + i], 3) << i;
}

TEST(SongAnalysis, WhatIsNoSongGivesNothing) {
  const ScratchFolder folder;
  EXPECT_FALSE(sound_of(folder.Write("a.wav", "no sound in here")));
  EXPECT_FALSE(sound_of(folder.File("none.wav")));
  const auto silence = sound_of(folder.Write("b.wav", silent_wav(4)));
  ASSERT_TRUE(silence);
  EXPECT_TRUE(silence->onsets.empty());
}
