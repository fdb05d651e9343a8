#include "platform/app/nonblocking_thread.h"

namespace {
thread_local int gDepth = 0;
} // namespace

NonblockingThread::NonblockingThread() {
  ++gDepth;
}

NonblockingThread::~NonblockingThread() {
  --gDepth;
}

bigtime_t NonblockingThread::Bounded(bigtime_t timeout) {
  return gDepth > 0 ? 0 : timeout;
}
