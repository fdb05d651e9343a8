#pragma once

#include "platform/app/looper.h"
#include "platform/app/messenger.h"

#include <string>
#include <vector>

/** The process's main looper, which owns its signature. One per process; created before all loopers that are to be
    found, ended after them. `Run` starts a thread: the main thread is the display's. */
class BApplication : public BLooper {
public:
  /** `offered`: the codes that other processes may send to the signature; see BRoster::AddName. */
  explicit BApplication(const char* signature, const std::vector<uint32>& offered = {});
  ~BApplication() override;

  const std::string& Signature() const { return fSignature; }

  /** Living loopers, windows among them. Any thread. */
  int32 CountLoopers() const;
  /** Addresses of the living windows in the order of their creation; each may end at any time. Any thread. */
  std::vector<BMessenger> WindowAddresses() const;
  /** The looper that runs on the thread; invalid when there is none. Any thread. */
  BMessenger LooperOn(thread_id thread) const;
  /** The living looper with this address, which is compared, never dereferenced; invalid when there is none. Any
      thread. */
  BMessenger LooperAt(const void* pointer) const;

private:
  std::string fSignature;
};

/** Null before the application is made and after it has ended. */
extern BApplication* be_app;
