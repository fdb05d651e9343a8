#include "player/app/other_transport.h"
#include "player/texts/player_texts.h"

#include "platform/app/message.h"
#include "player/app/player_events.h"
#include "player/bus/bus.h"
#include "player/model/info_record.h"
#include "player/model/song_text.h"

#include <algorithm>
#include <utility>

TOtherTransport::TOtherTransport(TBus* bus, TPlayerEvents* events, TSourceName name)
    : fBus(bus), fEvents(events), fName(std::move(name)) {}

void TOtherTransport::TakeReport(const BMessage& message) {
  int32 state = fPlayback.isPlaying  ? TInfoRecord::kPlaying
                : fPlayback.isLoaded ? TInfoRecord::kPaused
                                     : TInfoRecord::kStopped;
  message.FindString("title", &fSong.title);
  message.FindString("artist", &fSong.artist);
  message.FindString("path", &fSong.path);
  message.FindInt32("durationMs", &fSong.durationMs);
  message.FindInt32("state", &state);
  message.FindInt32("speedPercent", &fPlayback.speedPercent);
  message.FindInt32("volumePercent", &fPlayback.volumePercent);
  const bool wasSilent = fIsSilent;
  message.FindBool("silent", &fIsSilent);
  fSong.title = clean_text(fSong.title);
  fSong.artist = clean_text(fSong.artist);
  fSong.played = true;
  fPlayback.durationMs = fSong.durationMs;
  fPlayback.isLoaded = state != TInfoRecord::kStopped;
  fPlayback.isPlaying = state == TInfoRecord::kPlaying && !fIsSilent;
  if (fIsSilent && !wasSilent) return fEvents->ErrorOccurred(player_text("Player_Err_Not_Responding", {Name()}));
  if (wasSilent && !fIsSilent) fEvents->ErrorsResolved();
  fEvents->StateChanged();
  fEvents->PositionJumped(PositionMs());
}

int32 TOtherTransport::PositionMs() {
  return fBus->PositionMs();
}

void TOtherTransport::PlayPause() {
  fBus->SetPaused(fPlayback.isPlaying);
}

void TOtherTransport::Skip(int direction) {
  fBus->Skip(direction);
}

void TOtherTransport::Seek(int64 positionMs) {
  const auto bounded = static_cast<int32>(std::clamp<int64>(positionMs, 0, std::max(fSong.durationMs, int32{0})));
  fBus->SeekTo(bounded);
  fEvents->PositionJumped(bounded);
}

void TOtherTransport::SetSpeed(int64 percent) {
  fBus->SetSpeed(static_cast<double>(std::clamp(percent, kSlowestPercent, kFastestPercent)) / 100);
}

void TOtherTransport::SetVolume(int32 percent) {
  fBus->SetVolume(std::clamp(percent, int32{0}, int32{100}));
}
