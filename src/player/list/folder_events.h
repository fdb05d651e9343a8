#pragma once

#include "platform/support/types.h"

#include <chrono>
#include <string>
#include <unordered_map>

/** The watches of folders for changes that concern songs, by inotify. Each scan renews the watches of the folders that
    it reads; the others end with it. Used by one thread, except Wake. */
class TFolderEvents {
public:
  TFolderEvents();
  TFolderEvents(const TFolderEvents&) = delete;
  TFolderEvents& operator=(const TFolderEvents&) = delete;
  ~TFolderEvents();

  void BeginScan() { ++fScan; }
  /** False if the system does not allow more watches. */
  bool Watch(const std::string& folder);
  void EndScan();
  /** True when songs or folders have been created, removed or renamed; false at `until` or after Wake. */
  bool WaitForChange(std::chrono::steady_clock::time_point until);
  /** Thread-safe. */
  void Wake();

private:
  bool HasChanges();

  const int fInotify;
  const int fWake;
  int64 fScan = 0;
  std::unordered_map<int, int64> fWatches; // the last scan that has renewed it
};
