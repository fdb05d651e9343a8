#include "player/sound/now_playing.h"

#include "player/sound/song_source.h"

void TNowPlaying::Set(int32 state, int32 durationMs, std::string_view title) {
  const std::lock_guard lock(fMutex);
  fRecord.state = state;
  fRecord.durationMs = durationMs;
  set_title(&fRecord, title);
}

void TNowPlaying::SetSound(TSongControl* sound) {
  const std::lock_guard lock(fMutex);
  fSound = sound;
}

TInfoRecord TNowPlaying::Record() const {
  TSongControl* sound = nullptr;
  TInfoRecord record;
  {
    const std::lock_guard lock(fMutex);
    sound = fSound;
    record = fRecord;
  }
  record.positionMs = sound->PositionMs();
  return record;
}
