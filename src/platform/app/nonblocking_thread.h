#pragma once

#include "platform/support/types.h"

/** Scope in which the thread never blocks on a looper: every time-out counts as 0, so that a full queue, a lock that is
    taken and an answer that has not arrived are reported at once. Used by the display thread, on which every window
    depends. */
class NonblockingThread {
public:
  NonblockingThread();
  NonblockingThread(const NonblockingThread&) = delete;
  NonblockingThread& operator=(const NonblockingThread&) = delete;
  ~NonblockingThread();

  /** `timeout`, or 0 on a nonblocking thread. */
  static bigtime_t Bounded(bigtime_t timeout);
};
