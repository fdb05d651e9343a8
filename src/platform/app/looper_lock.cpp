#include "platform/app/looper_lock.h"

#include "platform/app/looper_core.h"
#include "platform/app/nonblocking_thread.h"

#include <utility>

TLooperLock::TLooperLock(std::shared_ptr<BLooper::Core> core, bigtime_t timeout) {
  if (core && core->Lock(timeout) == B_OK) fCore = std::move(core);
}

TLooperLock::TLooperLock(BLooper* looper, bigtime_t timeout)
    : TLooperLock(looper ? looper->fCore : nullptr, NonblockingThread::Bounded(timeout)) {}

TLooperLock::TLooperLock(const BMessenger& target, bigtime_t timeout)
    : TLooperLock(token_registry::find_looper(target.LocalToken()), NonblockingThread::Bounded(timeout)) {}

TLooperLock::~TLooperLock() {
  if (fCore) fCore->Unlock();
}

BLooper* TLooperLock::Looper() const {
  return fCore ? fCore->looper : nullptr;
}
