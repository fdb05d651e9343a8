#pragma once

#include "platform/support/types.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

/** A number that another thread computes on request. Whoever asks waits for a bounded time only: the other thread may
   be blocked by something outside this program. Any thread. */
class TTimedQuestion {
public:
  /** `send` passes the question on, with the id that its answer has to name; false when that cannot be done.
      Empty when there is no answer in time, and at once while an earlier question is overdue. */
  std::optional<double> Ask(const std::function<bool(uint64 id)>& send);
  void Answer(uint64 id, std::optional<double> value);

private:
  std::mutex fMutex; // guards fChanged and all below
  std::condition_variable fChanged;
  uint64 fAsked = 0;
  uint64 fAnswered = 0;
  uint64 fOverdue = 0;
  std::optional<double> fValue;
};
