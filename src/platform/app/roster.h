#pragma once

#include "platform/app/messenger.h"
#include "platform/storage/entry_ref.h"

#include <string>
#include <vector>

/** Finds running programs by signature; launches programs and documents. Thread-safe. */
class BRoster {
public:
  /** In this process or another. */
  bool IsRunning(const char* signature) const;
  /** The signatures with this prefix, of this process and of others; may include one that has just ended. */
  std::vector<std::string> Signatures(const std::string& beginning) const;
  /** Starts the installed program whose desktop entry has the signature (key X-KOREVA-Signature), without waiting for
      it. B_ALREADY_RUNNING when it runs or has just been started; B_LAUNCH_FAILED when none is installed. */
  status_t Launch(const char* signature) const;
  /** Opens a document with the desktop's preferred program for its type. */
  [[nodiscard]] status_t Launch(const entry_ref* ref) const;

  /** Registers another signature for this process: messages to it reach `target`. From other processes only those with
      the offered codes do; all others are answered with B_MESSAGE_NOT_UNDERSTOOD. B_NAME_IN_USE, which is logged, while
      another looper of this process owns the signature. */
  status_t AddName(const char* signature, const BMessenger& target, const std::vector<uint32>& offered = {}) const;
  status_t RemoveName(const char* signature) const;
};

extern const BRoster* const be_roster;
