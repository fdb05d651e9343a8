#pragma once

#include "player/info_record.h"

#include <mutex>

class TSongSource;

/** What the player's threads share about the song: written by the application's thread, read by the front-end host. */
class TNowPlaying {
public:
  explicit TNowPlaying(TSongSource* source) : fSource(source) {}
  /** Everything but the position, which is asked of the sound at each call of Record. */
  void Set(int32 state, int32 durationMs, std::string_view title);
  TInfoRecord Record() const;

private:
  TSongSource* const fSource;
  mutable std::mutex fMutex; // guards the record
  TInfoRecord fRecord;
};
