#pragma once

#include "platform/support/types.h"

#include <mutex>
#include <string>

/** The language file loaded last. Written by the thread that loads it, queried on the manager's thread. Thread-safe. */
class TAppPrivacy {
public:
  /** True if the file of the setting "LLTF" or its modification time differs from the recorded one. */
  bool ShouldBeLanguageChanged() const;
  void UpdateLanguageInfos();

private:
  mutable std::mutex fMutex;   // guards fPath, fModificationTime, fNanoseconds
  int32 fModificationTime = 0; // seconds; 0 if the file does not exist
  int32 fNanoseconds = 0;      // distinguishes two saves within a second
  std::string fPath;
};

extern TAppPrivacy* gAppPrivacy;
