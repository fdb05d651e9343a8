#pragma once

#include "platform/support/types.h"

#include <mutex>
#include <string>

/** The language file last loaded. Written by whoever loads the language, asked on the manager's thread. */
class TAppPrivacy {
public:
  /** True when the file of the setting "LLTF", or its time, is not the one recorded. */
  bool ShouldBeLanguageChanged() const;
  void UpdateLanguageInfos();

private:
  mutable std::mutex fMutex;   // guards the three below
  int32 fModificationTime = 0; // seconds; 0 for a file that is not there
  int32 fNanoseconds = 0;      // a file may be saved twice within a second
  std::string fPath;
};

extern TAppPrivacy* gAppPrivacy;
