#pragma once

#include "platform/app/looper.h"

/** Holds the lock of a looper for a scope. Converts to false, and holds nothing, when there is no looper (null, gone or
    ending), or when the time-out passed first. The looper may be quit within the scope. */
class [[nodiscard]] TLooperLock {
public:
  explicit TLooperLock(BLooper* looper, bigtime_t timeout = B_INFINITE_TIMEOUT);
  /** Locks the target's looper, which must be in this process. */
  explicit TLooperLock(const BMessenger& target, bigtime_t timeout = B_INFINITE_TIMEOUT);
  TLooperLock(const TLooperLock&) = delete;
  TLooperLock& operator=(const TLooperLock&) = delete;
  ~TLooperLock();

  explicit operator bool() const { return fCore != nullptr; }
  /** Null without the lock. */
  BLooper* Looper() const;

private:
  friend class BLooper;
  /** Ignores that the thread may be a nonblocking one. */
  TLooperLock(std::shared_ptr<BLooper::Core> core, bigtime_t timeout);
  std::shared_ptr<BLooper::Core> fCore;
};
