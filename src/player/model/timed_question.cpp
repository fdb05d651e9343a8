#include "player/model/timed_question.h"

#include "platform/kernel/threads.h"

#include <algorithm>
#include <chrono>

namespace {
/** A thousand times what an answer takes; short enough for a display that waits for it once. */
constexpr std::chrono::milliseconds kLongestAnswer{100};
} // namespace

std::optional<double> TTimedQuestion::Ask(const std::function<bool(uint64)>& send) {
  std::unique_lock lock(fMutex);
  if (fAnswered < fOverdue) return std::nullopt;
  const uint64 id = ++fAsked;
  lock.unlock();
  const bool isSent = send(id);
  lock.lock();
  if (isSent && fChanged.wait_for(lock, kLongestAnswer, [&] { return fAnswered >= id; })) return fValue;
  if (!isSent) return std::nullopt;
  if (fAnswered >= fOverdue) fOverdueSinceUs = system_time();
  fOverdue = std::max(fOverdue, id);
  return std::nullopt;
}

bool TTimedQuestion::IsOverdueFor(bigtime_t us) const {
  const std::lock_guard lock(fMutex);
  return fAnswered < fOverdue && system_time() - fOverdueSinceUs >= us;
}

void TTimedQuestion::Answer(uint64 id, std::optional<double> value) {
  {
    const std::lock_guard lock(fMutex);
    if (id < fAnswered) return;
    fAnswered = id;
    fValue = value;
  }
  fChanged.notify_all();
}
