#pragma once

#include "player/model/info_record.h"

#include <atomic>
#include <mutex>

class TSongControl;

/** The current song as shared between threads: written by the application's thread, read by the front-end host and the
    bus. Thread-safe. */
class TNowPlaying {
public:
  explicit TNowPlaying(TSongControl* sound) : fSound(sound) {}
  /** The source of the position from now on. A concurrent Record may still use the previous one. */
  void SetSound(TSongControl* sound);
  /** Everything but the position, which Record queries from the sound each time. */
  void Set(int32 state, int32 durationMs, std::string_view title);
  TInfoRecord Record() const;
  void SetSpeed(int32 percent) { fSpeedPercent = percent; }
  int32 SpeedPercent() const { return fSpeedPercent; }

private:
  mutable std::mutex fMutex; // guards fSound, fRecord
  TSongControl* fSound;
  TInfoRecord fRecord;
  std::atomic<int32> fSpeedPercent{100};
};
