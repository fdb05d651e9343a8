#include "player/app/other_transport.h"
#include "player/texts/player_texts.h"

#include "platform/app/message.h"
#include "player/app/player_events.h"
#include "player/bus/bus.h"
#include "player/model/info_record.h"
#include "player/model/player_messages.h"
#include "player/model/song_text.h"

#include <algorithm>
#include <utility>

TOtherTransport::TOtherTransport(TBus* bus, TPlayerEvents* events, TSourceName name)
    : fBus(bus), fEvents(events), fName(std::move(name)), fPartTimer(bus->Player()) {}

void TOtherTransport::TakeReport(const BMessage& message) {
  const int32 lastState = fPlayback.isPlaying  ? TInfoRecord::kPlaying
                          : fPlayback.isLoaded ? TInfoRecord::kPaused
                                               : TInfoRecord::kStopped;
  const int32 state = message.GetInt32("state", lastState);
  fSong.path = message.GetString("path", fSong.path);
  fSong.durationMs = message.GetInt32("durationMs", fSong.durationMs);
  fPlayback.speedPercent = message.GetInt32("speedPercent", fPlayback.speedPercent);
  fPlayback.volumePercent = message.GetInt32("volumePercent", fPlayback.volumePercent);
  const bool wasSilent = fIsSilent;
  fIsSilent = message.GetBool("silent", fIsSilent);
  fSong.title = clean_text(message.GetString("title", fSong.title));
  fSong.artist = clean_text(message.GetString("artist", fSong.artist));
  fSong.played = true;
  fPlayback.durationMs = fSong.durationMs;
  fPlayback.isLoaded = state != TInfoRecord::kStopped;
  const bool wasPlaying = std::exchange(fPlayback.isPlaying, state == TInfoRecord::kPlaying && !fIsSilent);
  if (wasPlaying && !fPlayback.isPlaying) CancelPart();
  if (fIsSilent && !wasSilent) return fEvents->ErrorOccurred(player_text("Player_Err_Not_Responding", {Name()}));
  if (wasSilent && !fIsSilent) fEvents->ErrorsResolved();
  fEvents->StateChanged();
  fEvents->PositionJumped(PositionMs());
}

int32 TOtherTransport::PositionMs() {
  return fBus->PositionMs();
}

void TOtherTransport::PlayPause() {
  CancelPart();
  fBus->SetPaused(fPlayback.isPlaying);
}

void TOtherTransport::Skip(int direction) {
  CancelPart();
  fBus->Skip(direction);
}

void TOtherTransport::Seek(int64 positionMs) {
  const auto bounded = static_cast<int32>(std::clamp<int64>(positionMs, 0, std::max(fSong.durationMs, int32{0})));
  CancelPart();
  SeekTo(bounded);
}

void TOtherTransport::SeekTo(int32 positionMs) {
  fBus->SeekTo(positionMs);
  fEvents->PositionJumped(positionMs);
}

void TOtherTransport::PlayPart(const TSongPart& part) {
  const auto bounded = fPlayback.isLoaded ? bounded_part(part, fSong.durationMs) : std::nullopt;
  if (!bounded) return;
  SeekTo(bounded->fromMs);
  fBus->SetPaused(false);
  CancelPart();
  if (!bounded->toMs) return;
  fPart = bounded;
  Beat();
}

void TOtherTransport::EndPart() {
  if (!fPart) return;
  fBus->SetPaused(true);
  SeekTo(fPart->fromMs);
  CancelPart();
}

void TOtherTransport::Beat() {
  if (!fPart) return;
  const TPartStep step = next_part_step(*fPart, PositionMs(), fPlayback.speedPercent);
  switch (step.action) {
  case TPartStep::TAction::kAbandon:
    return CancelPart();
  case TPartStep::TAction::kFinish:
    return EndPart();
  case TPartStep::TAction::kRepeat:
    SeekTo(fPart->fromMs);
    return fPartTimer.StartOnce(kMsgPartBeat, next_part_step(*fPart, fPart->fromMs, fPlayback.speedPercent).waitUs);
  case TPartStep::TAction::kWait:
    return fPartTimer.StartOnce(kMsgPartBeat, step.waitUs);
  }
}

void TOtherTransport::CancelPart() {
  fPart.reset();
  fPartTimer.Stop();
}

void TOtherTransport::SetSpeed(int64 percent) {
  fBus->SetSpeed(static_cast<double>(std::clamp(percent, kSlowestPercent, kFastestPercent)) / 100);
}

void TOtherTransport::SetVolume(int32 percent) {
  fBus->SetVolume(std::clamp(percent, int32{0}, int32{100}));
}
