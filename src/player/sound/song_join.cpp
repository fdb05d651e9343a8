#include "player/sound/song_join.h"

#include <algorithm>
#include <cmath>

namespace {
/** Reports are a tenth of a second apart. */
constexpr bigtime_t kLongestExtrapolationUs = 1000000;
} // namespace

void TSongJoin::Heard(double positionMs, bigtime_t nowUs) {
  const std::lock_guard lock(fMutex);
  if (fIsPending) return;
  fHeardMs = positionMs;
  fHeardUs = nowUs;
}

void TSongJoin::Jumped(double positionMs) {
  const std::lock_guard lock(fMutex);
  fHeardMs = positionMs;
  fHeardUs = 0;
}

void TSongJoin::Begin() {
  const std::lock_guard lock(fMutex);
  fIsPending = true;
  fEndMs.reset();
}

bool TSongJoin::IsPending() const {
  const std::lock_guard lock(fMutex);
  return fIsPending;
}

double TSongJoin::ExtrapolatedMs(double speed, bigtime_t nowUs) const {
  if (fHeardUs == 0) return fHeardMs;
  const bigtime_t elapsedUs = std::clamp<bigtime_t>(nowUs - fHeardUs, 0, kLongestExtrapolationUs);
  return fHeardMs + static_cast<double>(elapsedUs) / 1000 * speed;
}

int32 TSongJoin::PositionMs(std::optional<double> followerMs, double speed, bigtime_t nowUs) {
  const std::lock_guard lock(fMutex);
  if (followerMs && *followerMs < 0) {
    if (!fEndMs) fEndMs = ExtrapolatedMs(speed, nowUs) - *followerMs;
    return static_cast<int32>(std::lround(*fEndMs + *followerMs));
  }
  return static_cast<int32>(std::lround(fEndMs.value_or(ExtrapolatedMs(speed, nowUs))));
}

int32 TSongJoin::Finish(double speed, bigtime_t nowUs) {
  const std::lock_guard lock(fMutex);
  const double endMs = fEndMs.value_or(ExtrapolatedMs(speed, nowUs));
  fIsPending = false;
  fHeardMs = 0;
  fHeardUs = 0;
  return static_cast<int32>(std::lround(endMs));
}
