#include "player/bus/shared_position.h"

#include "platform/kernel/threads.h"

#include <algorithm>

namespace {
constexpr bigtime_t kNeededForUs = 3000000;
}

void TSharedPosition::OnNeed(std::function<void()> wake) {
  const std::lock_guard lock(fMutex);
  fWake = std::move(wake);
}

void TSharedPosition::Change(const std::function<void(TPositionEstimate&)>& change) {
  const std::lock_guard lock(fMutex);
  change(fEstimate);
}

int32 TSharedPosition::PositionMs() {
  std::function<void()> wake;
  const bigtime_t nowUs = system_time();
  int64 positionUs = 0;
  {
    const std::lock_guard lock(fMutex);
    fReadUs = nowUs;
    if (fIsAsleep) wake = fWake;
    if (wake) fIsAsleep = false;
    positionUs = fEstimate.PositionUs(nowUs);
  }
  if (wake) wake();
  return static_cast<int32>(std::clamp<int64>(positionUs / 1000, 0, INT32_MAX));
}

bigtime_t TSharedPosition::NextQuestionUs() {
  const bigtime_t nowUs = system_time();
  const std::lock_guard lock(fMutex);
  fIsAsleep = nowUs - fReadUs > kNeededForUs;
  return fIsAsleep ? -1 : fEstimate.NextQuestionUs(nowUs);
}
