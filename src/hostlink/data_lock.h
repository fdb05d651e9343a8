#pragma once

#include "platform/kernel/semaphores.h"

/** Scoped lock of a semaphore that is used as a mutex; locks nothing if the semaphore has been deleted. */
class TDataLock {
public:
  explicit TDataLock(sem_id lock) : fLock(acquire_sem(lock) == B_OK ? lock : -1) {}
  TDataLock(const TDataLock&) = delete;
  TDataLock& operator=(const TDataLock&) = delete;
  ~TDataLock() {
    if (fLock >= 0) release_sem(fLock);
  }

private:
  const sem_id fLock;
};
