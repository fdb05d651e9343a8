#include "player/now_playing.h"

#include "player/song_source.h"

void TNowPlaying::Set(int32 state, int32 durationMs, std::string_view title) {
  const std::lock_guard lock(fMutex);
  fRecord.state = state;
  fRecord.durationMs = durationMs;
  set_title(&fRecord, title);
}

TInfoRecord TNowPlaying::Record() const {
  const int32 positionMs = fSource->PositionMs();
  const std::lock_guard lock(fMutex);
  TInfoRecord record = fRecord;
  record.positionMs = positionMs;
  return record;
}
