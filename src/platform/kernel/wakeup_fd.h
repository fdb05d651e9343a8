#pragma once

#include "platform/kernel/unique_fd.h"

#include <sys/eventfd.h>

/** Wakes a thread that polls: readable from `Wake` until `Clear`. Any number of wake-ups before it count as one. */
class WakeupFd {
public:
  WakeupFd() : fFd(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

  /** -1 when the process has no descriptor to spare. */
  int Get() const { return fFd.Get(); }
  /** Any thread, and signal handlers; never blocks. */
  void Wake() const { eventfd_write(fFd.Get(), 1); }
  /** On the thread that polls, before it looks at what woke it. */
  void Clear() const {
    eventfd_t wakeups = 0;
    eventfd_read(fFd.Get(), &wakeups);
  }

private:
  UniqueFd fFd;
};
