#include "hostlink/sn_thread.h"

#include "platform/kernel/threads.h"
#include "platform/support/log.h"

#include <exception>

namespace {
constexpr bigtime_t kLookUs = 1000;
}

void SNThread::Main() {
  ThreadInit();
  ThreadCleanUp();
}

void SNThread::WaitUntilFinished() const {
  while (fFinished == 0) snooze(kLookUs);
}

void SNThread::Abort() {
  fQuitRequested = 1;
  WaitUntilFinished();
  // fFinished is set by code of this image, which may only be unloaded after the thread has left it.
  wait_for_thread(fThread, nullptr);
}

int32 SNThread::MainStarter(void* object) {
  auto* const thread = static_cast<SNThread*>(object);
  try {
    thread->Main();
  } catch (const std::exception& error) {
    log_error("front end", error.what());
    thread->ThreadCleanUp();
  }
  return 0;
}
