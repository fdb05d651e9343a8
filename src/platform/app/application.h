#pragma once

#include "platform/app/looper.h"
#include "platform/app/messenger.h"

#include <string>
#include <vector>

/** The process's main looper, bearer of its signature. One a process; made before every other looper that wants to be
    found, ended after them. `Run` starts a thread of its own: the process's first thread belongs to the display. */
class BApplication : public BLooper {
public:
  /** `offered`: the codes that other processes may send to the signature; see BRoster::AddName. */
  explicit BApplication(const char* signature, const std::vector<uint32>& offered = {});
  ~BApplication() override;

  const std::string& Signature() const { return fSignature; }

  /** Living loopers, windows among them. Any thread. */
  int32 CountLoopers() const;
  /** Where the living windows are, in the order of their making; each may end at any time. Any thread. */
  std::vector<BMessenger> WindowAddresses() const;
  /** The looper that runs on this thread; invalid when there is none. Any thread. */
  BMessenger LooperOn(thread_id thread) const;
  /** The living looper at this place in memory, which is compared and not followed; invalid when there is none. Any
      thread. */
  BMessenger LooperAt(const void* pointer) const;

private:
  std::string fSignature;
};

/** Null before the application is made and after it has ended. */
extern BApplication* be_app;
