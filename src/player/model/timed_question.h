#pragma once

#include "platform/support/types.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

/** A number that another thread computes on request. Thread-safe. The asking thread waits for a bounded time only,
    since the other thread may be blocked by something outside this program. */
class TTimedQuestion {
public:
  /** `send` passes the question on with an id, which the answer has to repeat; false if that fails.
      Empty if there is no answer in time, and immediately while an earlier question is overdue. */
  std::optional<double> Ask(const std::function<bool(uint64 id)>& send);
  /** An answer has been overdue for that long. */
  bool IsOverdueFor(bigtime_t us) const;
  void Answer(uint64 id, std::optional<double> value);

private:
  mutable std::mutex fMutex; // guards fAsked, fAnswered, fOverdue, fOverdueSinceUs, fValue
  std::condition_variable fChanged;
  uint64 fAsked = 0;
  uint64 fAnswered = 0;
  uint64 fOverdue = 0;
  bigtime_t fOverdueSinceUs = 0;
  std::optional<double> fValue;
};
