#pragma once

#include "player/model/info_record.h"
#include "player/model/playing_order.h"

#include <string>

/** This player's state as published on the bus. */
struct TOwnStatus {
  int32 state = TInfoRecord::kStopped;
  int64 track = 0; // differs for each load; 0 for no song
  std::string title;
  std::string artist;
  std::string album;
  int32 albumTrack = 0; // number within the album; 0 if unknown
  std::string path;
  std::string picture; // cover file; empty if unknown
  int32 durationMs = 0;
  int32 speedPercent = 100;
  int32 volumePercent = 100;
  bool shuffles = false;
  TRepeat repeat = TRepeat::kOff;
  bool wantsTray = false;  // an icon in the desktop's tray
  bool keepsAwake = false; // the computer is not to suspend itself now
  bool canPlay = false;
  bool canGoNext = false;
  bool canGoPrevious = false;

  bool operator==(const TOwnStatus&) const = default;
};
