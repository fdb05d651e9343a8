#pragma once

#include "platform/support/types.h"

#include <condition_variable>
#include <mutex>
#include <string>

namespace koreva {

/** A named thread that runs `Execute`. Created suspended. Unless it deletes itself, its owner calls Terminate and Wait
    before deleting it. Public functions are thread-safe. */
class TThread {
public:
  TThread(const char* name, long priority);
  TThread(const TThread&) = delete;
  TThread& operator=(const TThread&) = delete;
  virtual ~TThread() = default;

  /** Starts or continues the thread. Fails only if no thread can be created. */
  status_t Resume();
  /** The thread pauses at its next `IsTerminated`. */
  void Suspend();
  bool IsSuspended() const;
  /** Requests the end of the thread, waking it if it is suspended. */
  void Terminate();
  /** Joins the thread; returns at once if it was never started. Not from the thread itself. */
  void Wait();
  void SetName(const char* name);
  /** True: the object deletes itself at the end of `Execute`; then `Wait` must not be called. Set before `Resume`. */
  void SetAutoDelete(bool autoDelete);

protected:
  virtual int32 Execute() = 0;
  /** Polled by `Execute`; blocks while the thread is suspended. */
  bool IsTerminated();

private:
  static int32 Run(void* self);

  mutable std::mutex fMutex; // guards fName, fThread, fSuspended, fTerminated, fAutoDelete
  std::condition_variable fChanged;
  std::string fName;
  const int32 fPriority;
  thread_id fThread = 0; // 0 until started
  bool fSuspended = true;
  bool fTerminated = false;
  bool fAutoDelete = false;
};

} // namespace koreva
