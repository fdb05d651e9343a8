#pragma once

#include "player/model/playlist.h"

#include <string>
#include <unordered_set>
#include <vector>

/** The songs of watched folders that were offered to the list before, so that one that the user has removed from the
    list does not come back. Kept from one run to the next. Application's thread. */
class TKnownSongs {
public:
  /** The file may be absent. */
  void Load(const std::string& path);
  /** Nothing if nothing has changed. False if the file cannot be written; the old one is unchanged. */
  [[nodiscard]] bool Save();

  /** Without those that are known; from now on all of them are. */
  TSongs NewOf(TSongs songs);
  void Forget(const std::vector<std::string>& paths);
  /** All below it. */
  void ForgetFolder(const std::string& folder);
  /** All below it but those songs. */
  void KeepOnly(const std::string& folder, const TSongs& songs);

private:
  std::string fPath; // empty before Load
  std::unordered_set<std::string> fSongs;
  bool fHasChanged = false;
};
