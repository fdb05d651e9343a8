#pragma once

#include "player/playlist.h"

#include <string>
#include <vector>

/** All that the player's window shows, handed over whole after a change. */
struct TPlayerState {
  std::vector<TSong> songs;
  int32 current = -1;
  bool isPlaying = false;
  int32 durationMs = 0;
  int32 speedPercent = 100;
  int32 volumePercent = 100;
  /** What went wrong, a line each; empty when nothing did. */
  std::string faults;
};
