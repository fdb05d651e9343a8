#pragma once

#include "platform/support/types.h"

/** While one lives, its thread never blocks on a looper: whatever timeout a call names, a full queue, a lock that
    somebody holds and an answer that has not come yet are reported at once. Made by the display thread, on which every
    window depends. */
class NonblockingThread {
public:
  NonblockingThread();
  NonblockingThread(const NonblockingThread&) = delete;
  NonblockingThread& operator=(const NonblockingThread&) = delete;
  ~NonblockingThread();

  /** How long the calling thread may wait when a call asks for `timeout`. */
  static bigtime_t Bounded(bigtime_t timeout);
};
