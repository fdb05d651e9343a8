#pragma once

#include "platform/support/types.h"

#include <atomic>

/** A thread of the link to the player. */
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
  /** Asks the thread to end and waits until it has, looking every millisecond. */
  void Abort();
  /** For spawn_thread; the argument is the object. */
  static int32 MainStarter(void* object);

protected:
  void WaitUntilFinished() const;

  thread_id fThread = 0;
  std::atomic<int32> fQuitRequested{0};
  std::atomic<int32> fFinished{1};
};
