#pragma once

#include "player/playlist.h"

#include <memory>
#include <string>
#include <vector>

/** All that the player's window shows, handed over whole after a change. */
struct TPlayerState {
  std::shared_ptr<const TSongs> songs = std::make_shared<TSongs>();
  int32 current = -1;
  bool isLoaded = false;
  bool isPlaying = false;
  int32 durationMs = 0;
  int32 speedPercent = 100;
  int32 volumePercent = 100;
  /** The part that is played again and again; -1 where it has no such end. */
  int32 repeatFromMs = -1;
  int32 repeatToMs = -1;
  /** The tagged moments of this song's lyrics, ascending; null when no lyrics are open for it. */
  std::shared_ptr<const std::vector<int32>> marksMs;
  /** What went wrong, a line each; empty when nothing did. */
  std::string faults;
};
