#pragma once

#include "player/model/info_record.h"

#include <string>

/** What the player tells the desktop of itself. */
struct TOwnStatus {
  int32 state = TInfoRecord::kStopped;
  int64 track = 0; // another number for every load; 0: no song
  std::string title;
  std::string artist;
  std::string path;
  std::string picture; // a file; empty: none is known
  int32 durationMs = 0;
  int32 speedPercent = 100;
  int32 volumePercent = 100;
  bool canPlay = false;
  bool canGoNext = false;
  bool canGoPrevious = false;

  bool operator==(const TOwnStatus&) const = default;
};
