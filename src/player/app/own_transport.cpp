#include "player/app/own_transport.h"

#include "platform/app/message.h"
#include "player/app/player_events.h"
#include "player/list/tag_fields.h"
#include "player/model/player_messages.h"
#include "player/model/song_address.h"
#include "player/model/song_text.h"
#include "player/sound/song_source.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <tuple>
#include <utility>

namespace {

constexpr int64 kTicksPerFileCheck = 10;
/** Later in the song "previous" goes to its beginning. */
constexpr int32 kPreviousSongWithinMs = 3000;
/** A shorter range comes from a key pressed twice. */
constexpr int32 kShortestRepeatMs = 50;

} // namespace

TOwnTransport::TOwnTransport(TPlaylist* songs, std::shared_ptr<TSongSource> sound, TPlayerEvents* events)
    : fSongs(songs), fSound(std::move(sound)), fEvents(events) {}

void TOwnTransport::PlaySong(int32 index, bool paused, int32 fromMs) {
  fThread.Check();
  if (!fSongs->SetCurrent(index)) return;
  fEvents->SongBegins();
  const TSong* const song = fSongs->CurrentSong();
  fResumeMs = fromMs;
  fPlayback.isLoaded = true;
  fPlayback.isPlaying = !paused;
  fPlayback.durationMs = song->durationMs;
  ForgetRepeat();
  fLoad = fSound->Load(song->path, paused);
  fSound->SetVolume(fPlayback.volumePercent);
  fEvents->StateChanged();
}

void TOwnTransport::Stop() {
  if (fPlayback.isLoaded) fSound->Stop();
  fLoad = 0; // what the sound still reports concerns no song any more
  fPlayback.isLoaded = false;
  fPlayback.isPlaying = false;
  fPlayback.durationMs = 0;
  ForgetRepeat();
  fEvents->StateChanged();
  fEvents->PositionJumped(0);
}

void TOwnTransport::Pause() {
  if (!fPlayback.isLoaded || !fPlayback.isPlaying) return;
  fSound->SetPaused(true);
  fPlayback.isPlaying = false;
}

void TOwnTransport::SeekBy(int32 byMs) {
  const int64 positionMs = int64{PositionMs()} + byMs;
  const bool isBeyond = fPlayback.isLoaded && fPlayback.durationMs > 0 && positionMs > fPlayback.durationMs;
  if (isBeyond) return Skip(1);
  Seek(positionMs);
}

void TOwnTransport::End() {
  fSound.reset();
}

int32 TOwnTransport::PositionMs() {
  return fSound->PositionMs();
}

void TOwnTransport::PlayPause() {
  fThread.Check();
  if (!fPlayback.isLoaded) return PlaySong(std::max(fSongs->Current(), int32{0}), false);
  fPlayback.isPlaying = !fPlayback.isPlaying;
  fSound->SetPaused(!fPlayback.isPlaying);
  fEvents->StateChanged();
}

void TOwnTransport::Skip(int direction) {
  if (direction < 0 && fPlayback.isLoaded && PositionMs() > kPreviousSongWithinMs) return Seek(0);
  PlaySong(fSongs->Neighbour(direction), false);
}

void TOwnTransport::Seek(int64 positionMs) {
  fThread.Check();
  if (!fPlayback.isLoaded) return;
  const auto bounded = static_cast<int32>(std::clamp<int64>(positionMs, 0, std::max(fPlayback.durationMs, int32{0})));
  fSound->SeekTo(bounded);
  fEvents->SongSought(bounded);
}

void TOwnTransport::SetSpeed(int64 percent) {
  fPlayback.speedPercent = static_cast<int32>(std::clamp(percent, kSlowestPercent, kFastestPercent));
  fSound->SetSpeed(fPlayback.speedPercent / 100.0);
  fEvents->StateChanged();
}

void TOwnTransport::SetVolume(int32 percent) {
  fPlayback.volumePercent = std::clamp(percent, int32{0}, int32{100});
  fSound->SetVolume(fPlayback.volumePercent);
  fEvents->StateChanged();
}

/** Either end may be set first: set after the end, an earlier position becomes the start. */
void TOwnTransport::SetRepeat(uint32 request) {
  if (!fPlayback.isLoaded) return;
  const int32 positionMs = PositionMs();
  int32& fromMs = fPlayback.repeatFromMs;
  int32& toMs = fPlayback.repeatToMs;
  if (request == kMsgRepeatOff) fromMs = toMs = -1;
  if (request == kMsgRepeatFrom) {
    fromMs = positionMs;
    if (toMs <= fromMs) toMs = -1;
  }
  if (request == kMsgRepeatTo) std::tie(fromMs, toMs) = std::minmax({std::max(fromMs, int32{0}), positionMs});
  if (toMs - fromMs < kShortestRepeatMs) toMs = -1;
  fSound->SetRepeat(fromMs, toMs);
  fEvents->StateChanged();
}

void TOwnTransport::ForgetRepeat() {
  if (fPlayback.repeatToMs >= 0) fSound->SetRepeat(-1, -1);
  fPlayback.repeatFromMs = fPlayback.repeatToMs = -1;
}

bool TOwnTransport::Handle(const BMessage& message) {
  fThread.Check();
  switch (message.what) {
  case kMsgSongLoaded:
    if (IsAboutThisLoad(message)) Loaded(message);
    return true;
  case kMsgSongEnded:
    if (IsAboutThisLoad(message)) Ended();
    return true;
  case kMsgSongFailed:
    if (IsAboutThisLoad(message)) Failed(message);
    return true;
  case kMsgOutputChanged:
    if (message.FindBool("silent", &fHasNoDevice) == B_OK) fEvents->StateChanged();
    return true;
  default:
    return false;
  }
}

/** The sound reports asynchronously: the song may have been replaced meanwhile. */
bool TOwnTransport::IsAboutThisLoad(const BMessage& message) const {
  int64 load = 0;
  return message.FindInt64("load", &load) == B_OK && load == fLoad && fSongs->Current() >= 0;
}

void TOwnTransport::Loaded(const BMessage& message) {
  TSong* const song = fSongs->Edit(fSongs->Current());
  take_tags(tags_in(message), song);
  song->played = true;
  song->error.clear();
  fPlayback.durationMs = song->durationMs;
  fLoadedLoad = fLoad;
  fEvents->StateChanged();
  if (fResumeMs > 0) Seek(std::exchange(fResumeMs, 0));
}

void TOwnTransport::Ended() {
  const std::string error = early_end(*fSongs->CurrentSong(), PositionMs());
  if (!error.empty()) fEvents->ErrorOccurred(error);
  PlayOn();
}

void TOwnTransport::PlayOn() {
  const int32 next = fSongs->Neighbour(1);
  // After a song that failed while paused the next one waits too.
  if (next >= 0) return PlaySong(next, !fPlayback.isPlaying);
  fPlayback.isLoaded = false;
  fPlayback.isPlaying = false;
  fEvents->StateChanged();
}

void TOwnTransport::Failed(const BMessage& message) {
  std::string reason;
  message.FindString("reason", &reason);
  TSong* const song = fSongs->Edit(fSongs->Current());
  song->error = file_error(song->path, reason);
  fEvents->ErrorOccurred("Cannot play " + song->path + ": " + song->error);
  PlayOn();
}

/** A file that was removed plays on to its end, but could not be played again: warns while the user can still act. */
void TOwnTransport::Tick() {
  const bool isDone = !fPlayback.isLoaded || fLoadedLoad != fLoad || fMissingLoad == fLoad;
  if (++fTicks % kTicksPerFileCheck != 0 || isDone) return;
  const std::string& path = fSongs->CurrentSong()->path;
  if (!is_file_path(path) || access(path.c_str(), F_OK) == 0 || errno != ENOENT) return;
  fMissingLoad = fLoad;
  fEvents->ErrorOccurred("The file being played was moved or deleted: " + path);
}
