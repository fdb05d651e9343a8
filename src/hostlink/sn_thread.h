#pragma once

#include "platform/support/types.h"

#include <atomic>

/** Base class of the worker thread. */
class SNThread {
public:
  SNThread() = default;
  SNThread(const SNThread&) = delete;
  SNThread& operator=(const SNThread&) = delete;
  virtual ~SNThread() = default;

  /** The thread's body. */
  virtual void Main();
  void ThreadInit() {}
  void ThreadCleanUp() { fFinished = 1; }
  /** Requests the end of the thread and joins it, polling every millisecond. */
  void Abort();
  /** Entry point for spawn_thread; the argument is the object. */
  static int32 MainStarter(void* object);

protected:
  void WaitUntilFinished() const;

  thread_id fThread = 0;
  std::atomic<int32> fQuitRequested{0};
  std::atomic<int32> fFinished{1};
};
