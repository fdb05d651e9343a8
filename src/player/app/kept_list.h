#pragma once

#include "player/model/playlist.h"

#include <string>

/** What is kept for the next run. */
struct TKeptList {
  TSongs songs;
  int32 current = -1;
  int32 positionMs = 0;
  int32 volumePercent = 100;
};

/** Empty if there is no file. */
TKeptList load_kept_list(const std::string& path);
/** Replaces the file atomically, creating its folder. False if it could not be written; the old file is unchanged. */
[[nodiscard]] bool save_kept_list(const TKeptList& list, const std::string& path);

/** In the user's settings folder. */
std::string kept_list_path();
