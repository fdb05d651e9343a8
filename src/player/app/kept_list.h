#pragma once

#include "player/model/playlist.h"

#include <string>

/** What the player finds again when it is started the next time. */
struct TKeptList {
  TSongs songs;
  int32 current = -1;
  int32 positionMs = 0;
  int32 volumePercent = 100;
};

/** Empty where there is none. */
TKeptList load_kept_list(const std::string& path);
/** Atomically: a failed write leaves the old file whole. Makes the folder. False when it could not be written. */
bool save_kept_list(const TKeptList& list, const std::string& path);

/** In the user's settings folder. */
std::string kept_list_path();
