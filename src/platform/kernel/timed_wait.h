#pragma once

#include "platform/kernel/threads.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

/** Time-outs in microseconds, for condition variables and poll(). */

/** The point in time `timeout` from now; B_INFINITE_TIMEOUT when that is out of range. */
inline bigtime_t deadline_after(bigtime_t timeout) {
  const bigtime_t now = system_time();
  return timeout > B_INFINITE_TIMEOUT - now ? B_INFINITE_TIMEOUT : now + timeout;
}

/** Milliseconds for poll(), at most an hour, after which the caller looks again; rounded up so that it does not spin.
 */
inline int poll_timeout(bigtime_t deadline) {
  constexpr bigtime_t kLongestUs = 3'600'000'000;
  if (deadline == B_INFINITE_TIMEOUT) return -1;
  return static_cast<int>(std::clamp<bigtime_t>(deadline - system_time(), 0, kLongestUs) / 1000 + 1);
}

/** Waits until `isReady`, which is called with the lock held. B_OK when it is; else B_WOULD_BLOCK for a timeout of 0,
    B_TIMED_OUT for any other. */
template <typename IsReady>
status_t wait_until_ready(std::condition_variable* changed, std::unique_lock<std::mutex>* lock, bigtime_t timeout,
                          IsReady isReady) {
  constexpr std::chrono::microseconds kLongest = std::chrono::years(1); // the clock's range is not far above
  if (timeout == B_INFINITE_TIMEOUT) {
    changed->wait(*lock, isReady);
    return B_OK;
  }
  if (changed->wait_for(*lock, std::min(std::chrono::microseconds(timeout), kLongest), isReady)) return B_OK;
  return timeout == 0 ? B_WOULD_BLOCK : B_TIMED_OUT;
}
