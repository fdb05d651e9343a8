#pragma once

#include "platform/app/messenger.h"
#include "platform/storage/entry_ref.h"

#include <string>
#include <vector>

/** Who runs, and starting programs and documents. Any thread. */
class BRoster {
public:
  /** In this process or another. */
  bool IsRunning(const char* signature) const;
  /** The signatures that begin so, of this process and of others; one that has just ended may be among them. */
  std::vector<std::string> Signatures(const std::string& beginning) const;
  /** Starts the installed program whose desktop entry has the signature (key X-KOREVA-Signature), without waiting for
      it. B_ALREADY_RUNNING when it runs or has just been started; B_LAUNCH_FAILED when none is installed. */
  status_t Launch(const char* signature) const;
  /** Opens a document with the desktop's preferred program for its type. */
  status_t Launch(const entry_ref* ref) const;

  /** One more name for this process: messages to `signature` reach `target` until the name is dropped. From other
      processes only those with the offered codes do; to all others the answer is B_MESSAGE_NOT_UNDERSTOOD. */
  status_t AddName(const char* signature, const BMessenger& target, const std::vector<uint32>& offered = {}) const;
  status_t RemoveName(const char* signature) const;
};

extern const BRoster* const be_roster;
