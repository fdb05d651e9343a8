#include "common/thread.h"

#include "platform/kernel/threads.h"
#include "platform/support/log.h"

#include <exception>

namespace koreva {

TThread::TThread(const char* name, long priority) : fName(name), fPriority(static_cast<int32>(priority)) {}

status_t TThread::Resume() {
  const std::lock_guard lock(fMutex);
  if (fThread == 0) {
    const thread_id thread = spawn_thread(Run, fName.c_str(), fPriority, this);
    const status_t started = resume_thread(thread);
    if (started != B_OK) return started;
    fThread = thread;
  }
  fSuspended = false;
  fChanged.notify_all();
  return B_OK;
}

void TThread::Suspend() {
  const std::lock_guard lock(fMutex);
  fSuspended = true;
}

bool TThread::IsSuspended() const {
  const std::lock_guard lock(fMutex);
  return fSuspended;
}

void TThread::Terminate() {
  const std::lock_guard lock(fMutex);
  fTerminated = true;
  fChanged.notify_all();
}

bool TThread::IsTerminated() {
  std::unique_lock lock(fMutex);
  fChanged.wait(lock, [this] { return !fSuspended || fTerminated; });
  return fTerminated;
}

void TThread::Wait() {
  thread_id thread = 0;
  {
    const std::lock_guard lock(fMutex);
    thread = fThread;
  }
  if (thread != 0) wait_for_thread(thread, nullptr); // fails at once if the thread has already ended
}

void TThread::SetName(const char* name) {
  const std::lock_guard lock(fMutex);
  fName = name;
  if (fThread != 0) rename_thread(fThread, name);
}

void TThread::SetAutoDelete(bool autoDelete) {
  const std::lock_guard lock(fMutex);
  fAutoDelete = autoDelete;
}

int32 TThread::Run(void* argument) {
  auto* const self = static_cast<TThread*>(argument);
  int32 result = B_ERROR;
  try {
    result = self->Execute();
  } catch (const std::exception& error) {
    log_error("TThread", error.what());
  }
  bool deletesItself = false;
  {
    const std::lock_guard lock(self->fMutex);
    deletesItself = self->fAutoDelete;
  }
  if (deletesItself) delete self;
  return result;
}

} // namespace koreva
