#pragma once

#include "player/model/info_record.h"

#include <mutex>

class TSongControl;

/** What the player's threads share about the song: written by the application's thread, read by the front-end host. */
class TNowPlaying {
public:
  explicit TNowPlaying(TSongControl* sound) : fSound(sound) {}
  /** Whose position counts from now on. The one before may still be asked at this moment. */
  void SetSound(TSongControl* sound);
  /** Everything but the position, which is asked of the sound at each call of Record. */
  void Set(int32 state, int32 durationMs, std::string_view title);
  TInfoRecord Record() const;

private:
  mutable std::mutex fMutex; // guards the two below
  TSongControl* fSound;
  TInfoRecord fRecord;
};
