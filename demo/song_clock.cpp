#include "demo/song_clock.h"

#include "demo/locate_sound.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr size_t kWindow = TSinkRecorder::kRate / 6; // long enough to tell the chords apart
constexpr double kSureLikeness = 0.9;
constexpr double kStartSearchSec = 4;
constexpr double kFollowSearchSec = 0.15;

int64_t to_us(double seconds) {
  return std::llround(seconds * 1e6);
}

} // namespace

TSongClock::TSongClock(std::vector<float> song, const TSinkRecorder& recorder)
    : fSong(std::move(song)), fRecorder(recorder) {}

std::optional<double> TSongClock::FindIn(const std::vector<float>& heard, size_t middle, double aroundSec,
                                         double rangeSec) const {
  const auto place = locate(fSong, heard, middle, {aroundSec, rangeSec, kWindow});
  return place && place->likeness >= kSureLikeness ? std::optional(place->seconds) : std::nullopt;
}

bool TSongClock::WaitForStart(int64_t begunUs, double timeoutSec) {
  for (const int64_t deadline = begunUs + to_us(timeoutSec); clock_us() < deadline; usleep(200'000)) {
    const auto heard = fRecorder.Samples();
    if (heard.size() < kWindow || !fRecorder.HasTiming()) continue;
    const size_t middle = heard.size() - kWindow / 2 - 1;
    // The position cannot exceed the time since the start, which bounds the search.
    const double sinceSec = static_cast<double>(fRecorder.WhenUs(middle) - begunUs) / 1e6;
    const double half = std::clamp(sinceSec, 0.0, kStartSearchSec) / 2;
    const auto place = FindIn(heard, middle, half, half);
    if (!place) continue;
    fZeroUs = fRecorder.WhenUs(middle) - to_us(*place);
    return true;
  }
  return false;
}

void TSongClock::Follow() {
  const auto heard = fRecorder.Samples();
  const size_t middle = heard.size() - kWindow / 2 - 1;
  const int64_t us = fRecorder.WhenUs(middle);
  const double expectedSec = static_cast<double>(us - fZeroUs) / 1e6;
  if (const auto place = FindIn(heard, middle, expectedSec, kFollowSearchSec)) fZeroUs = us - to_us(*place);
}

int64_t TSongClock::HeardAtUs(double songSec) const {
  return fZeroUs + to_us(songSec);
}

std::optional<double> TSongClock::SongSecAt(int64_t us) const {
  const double middle = static_cast<double>(us - fRecorder.StartUs()) * TSinkRecorder::kRate / 1e6;
  const double expectedSec = static_cast<double>(us - fZeroUs) / 1e6;
  return FindIn(fRecorder.Samples(), static_cast<size_t>(std::max(0.0, middle)), expectedSec, kFollowSearchSec);
}
