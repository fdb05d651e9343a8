#pragma once

#include "platform/support/types.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

/** A thread for work that may block without a limit, as on a disk or server that does not answer. Its owner never waits
    longer than the timeout without progress: then the thread is abandoned (detached), and the image of its code stays
    mapped until the process ends. The work must therefore share the ownership of everything it uses. Not thread-safe:
    called by the owner's thread. */
class TAbandonableThread {
public:
  /** Incremented by the work with every part that it has done. */
  using TProgress = std::atomic<int64>;
  using TWork = std::function<void(TProgress*)>;

  /** `timeout`: how long to wait without progress. */
  explicit TAbandonableThread(std::chrono::milliseconds timeout) : fTimeout(timeout) {}
  TAbandonableThread(const TAbandonableThread&) = delete;
  TAbandonableThread& operator=(const TAbandonableThread&) = delete;
  /** Waits for the end of the work, or abandons it. */
  ~TAbandonableThread();

  /** Starts a thread of that name (at most 15 bytes). Waits for the end of the previous one first; false, with nothing
      started, if that one hangs. */
  bool Start(const char* name, TWork work);
  /** True when the work has ended, or none was started; false when it has made no progress for the timeout. Then it is
      not waited for again before it makes some. */
  bool WaitForEnd();

private:
  struct TState;

  const std::chrono::milliseconds fTimeout;
  int64 fHungAt = -1;             // the progress at which it was found hanging
  std::shared_ptr<TState> fState; // of fThread
  std::thread fThread;
};
