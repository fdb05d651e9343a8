#pragma once

#include "platform/app/looper.h"

#include <string>
#include <vector>

class BWindow;

/** The process's main looper, bearer of its signature. One a process; made before every other looper that wants to be
    found, ended after them. `Run` starts a thread of its own: the process's first thread belongs to the display. */
class BApplication : public BLooper {
public:
  explicit BApplication(const char* signature);
  ~BApplication() override;

  const std::string& Signature() const { return fSignature; }

  /** Living loopers, windows among them, in the order of their making. A pointer is safe to use only after a
      successful `BMessenger(looper)` lock or on its own thread. Any thread. */
  int32 CountLoopers() const;
  BLooper* LooperAt(int32 index) const;
  int32 CountWindows() const;
  BWindow* WindowAt(int32 index) const;

private:
  std::string fSignature;
};

/** Null before the application is made and after it has ended. */
extern BApplication* be_app;
