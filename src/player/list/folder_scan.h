#pragma once

#include "player/model/playlist.h"

#include <sys/types.h>

#include <functional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

class TFolderEvents;

/** What the scan before has found in a watched folder. */
struct TFolderState {
  std::unordered_set<std::string> songs{};
  std::pair<dev_t, ino_t> node{}; // another one after a disk was unmounted or mounted
  bool wasScanned = false;
  std::unordered_set<std::string> reported{}; // texts' keys of the limits that it has reached
};

struct TFolderScan {
  TSongs come{}; // in order
  std::vector<std::string> gone{};
  std::vector<std::string> errors{}; // a line for each limit reached for the first time
  bool isFirst = false;
  bool isAbsent = false;
  bool isUnsettled = false; // some files are still being written
  bool isUnwatched = false; // not all subfolders could be watched
};

/** Finds the songs in a watched folder, down to a bounded depth, and compares them with the scan before. Watches all
    folders that it reads. Songs are gone only if the whole folder could be read. Worker thread. */
TFolderScan scan_folder(const std::string& folder, TFolderState* state, TFolderEvents* events,
                        const std::function<bool()>& isEnding);
