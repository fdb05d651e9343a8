#pragma once

#include "platform/support/types.h"

#include <condition_variable>
#include <mutex>
#include <string>

namespace koreva {

/** A named thread whose body is `Execute`. It begins suspended. Whoever made it calls Terminate, then Wait, before
    deleting it, unless it deletes itself. Any thread may call the public operations. */
class TThread {
public:
  TThread(const char* name, long priority);
  TThread(const TThread&) = delete;
  TThread& operator=(const TThread&) = delete;
  virtual ~TThread() = default;

  /** Starts the body, or lets a suspended one go on. Fails only when no thread can be had. */
  status_t Resume();
  /** The body stops at its next `IsTerminated`. */
  void Suspend();
  bool IsSuspended() const;
  /** Asks the body to end; wakes it when it is suspended. */
  void Terminate();
  /** Returns when the body has ended; at once when it was never started. Not for the body itself. */
  void Wait();
  void SetName(const char* name);
  /** On: the object deletes itself when its body has ended, and nobody may wait for it. Set before `Resume`. */
  void SetAutoDelete(bool autoDelete);

protected:
  virtual int32 Execute() = 0;
  /** Polled by the body, which is held here while the thread is suspended. */
  bool IsTerminated();

private:
  static int32 Run(void* self);

  mutable std::mutex fMutex; // guards all below
  std::condition_variable fChanged;
  std::string fName;
  const int32 fPriority;
  thread_id fThread = 0; // 0 before the start
  bool fSuspended = true;
  bool fTerminated = false;
  bool fAutoDelete = false;
};

} // namespace koreva
