#include "player/app/own_transport.h"
#include "player/texts/player_texts.h"

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
/** More than a key is ever held back. */
constexpr int32 kLongestAgoMs = 2000;
/** The rest of a song in which the next one of the album is queued. */
constexpr int32 kQueuedBeforeEndMs = 8000;

bool are_of_one_album(const TSong& a, const TSong& b) {
  const auto folder_of = [](const TSong& song) { return song.path.substr(0, song.path.rfind('/') + 1); };
  return !a.album.empty() && a.album == b.album && is_file_path(a.path) && folder_of(a) == folder_of(b);
}

} // namespace

TOwnTransport::TOwnTransport(TPlaylist* songs, std::shared_ptr<TSongSource> sound, TPlayerEvents* events)
    : fSongs(songs), fSound(std::move(sound)), fEvents(events), fOrder(songs) {}

void TOwnTransport::SetChoices(const TPlayerChoices& choices) {
  fThread.Check();
  fChoices = choices;
  fOrder.SetModes(choices.modes);
  if (fPlayback.isLoaded) ApplySound();
  fEvents->StateChanged();
}

/** Not before the first song: it would load the audio library. */
void TOwnTransport::ApplySound() {
  if (fAppliedSound == fChoices.sound) return;
  fAppliedSound = fChoices.sound;
  fSound->SetSound(fAppliedSound);
}

void TOwnTransport::SetClicks(TSongClicks::TTimes marksMs) {
  fClicks.SetMarks(std::move(marksMs));
  ApplyClicks();
}

void TOwnTransport::CountIn(const BMessage& message) {
  fClicks.CountIn(message);
  ApplyClicks();
}

/** Not before the first song: it would load the audio library. */
void TOwnTransport::ApplyClicks() {
  if (!fPlayback.isLoaded) return;
  if (const auto timesMs = fClicks.Changed()) fSound->SetClicks(*timesMs);
}

void TOwnTransport::PlaySong(int32 index, bool paused, int32 fromMs) {
  fThread.Check();
  const TSong* const song = fSongs->At(index);
  if (song == nullptr) return;
  fResumeMs = fromMs;
  ApplySound();
  ForgetRepeat();
  Begin(index, paused, fSound->Load(song->path, paused));
  fSound->SetVolume(fPlayback.volumePercent);
  fEvents->StateChanged();
}

void TOwnTransport::Begin(int32 index, bool paused, int64 load) {
  fSongs->SetCurrent(index);
  fOrder.SongBegins();
  fEvents->SongBegins();
  fLoad = load;
  fPart = 0;
  fWaitingPart.reset();
  fClicks.EndCountIn();
  fFollower = {};
  fPlayback.isLoaded = true;
  fPlayback.isPlaying = !paused;
  fPlayback.durationMs = fSongs->CurrentSong()->durationMs;
}

void TOwnTransport::Stop() {
  if (fPlayback.isLoaded) fSound->Stop();
  fFollower = {};
  fPart = 0;
  fWaitingPart.reset();
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
  fPart = 0;
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
  fPart = 0;
  fIsHanging = false;
  fPlayback.isPlaying = !fPlayback.isPlaying;
  fSound->SetPaused(!fPlayback.isPlaying);
  fEvents->StateChanged();
}

void TOwnTransport::Skip(int direction) {
  SkipTo(direction, false);
}

void TOwnTransport::SkipAsItIs(int direction) {
  SkipTo(direction, fPlayback.isLoaded && !fPlayback.isPlaying);
}

void TOwnTransport::SkipTo(int direction, bool startsPaused) {
  if (direction < 0 && fPlayback.isLoaded && PositionMs() > kPreviousSongWithinMs) return Seek(0);
  PlaySong(fOrder.SkipTarget(direction), startsPaused);
}

void TOwnTransport::Seek(int64 positionMs) {
  fThread.Check();
  if (!fPlayback.isLoaded) return;
  const auto bounded = static_cast<int32>(std::clamp<int64>(positionMs, 0, std::max(fPlayback.durationMs, int32{0})));
  fPart = 0;
  fClicks.EndCountIn();
  ApplyClicks();
  fSound->SeekTo(bounded);
  fEvents->SongSought(bounded);
}

void TOwnTransport::PlayPart(const TSongPart& part) {
  fThread.Check();
  if (!fPlayback.isLoaded) PlaySong(std::max(fSongs->Current(), int32{0}), true);
  if (fLoadedLoad != fLoad) {
    fWaitingPart = part;
    return;
  }
  const auto bounded = fPlayback.isLoaded ? bounded_part(part, fPlayback.durationMs) : std::nullopt;
  if (!bounded) return;
  const int64 number = fSound->PlayPart(*bounded);
  fPart = bounded->toMs ? number : 0;
  fPartFromMs = bounded->fromMs;
  fPlayback.isPlaying = true;
  fEvents->SongSought(bounded->fromMs);
  fEvents->StateChanged();
}

void TOwnTransport::EndPart() {
  if (std::exchange(fPart, 0) == 0) return;
  Pause();
  Seek(fPartFromMs);
  fEvents->StateChanged();
}

/** Unless the user has already chosen something else. */
void TOwnTransport::PartEnded(const BMessage& message) {
  int64 part = 0;
  if (message.FindInt64("part", &part) != B_OK || part == 0 || part != fPart) return;
  fPart = 0;
  fPlayback.isPlaying = false;
  fEvents->SongSought(fPartFromMs);
  fEvents->StateChanged();
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
void TOwnTransport::SetRepeat(uint32 request, int32 agoMs) {
  if (!fPlayback.isLoaded) return;
  const int32 played =
      fPlayback.isPlaying ? std::clamp(agoMs, int32{0}, kLongestAgoMs) * fPlayback.speedPercent / 100 : 0;
  const int32 positionMs = std::max(PositionMs() - played, int32{0});
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
  case kMsgPartEnded:
    PartEnded(message);
    return true;
  case kMsgSongEnded:
    if (IsAboutThisLoad(message)) Ended(PositionMs());
    return true;
  case kMsgSongJoined:
    if (IsAboutThisLoad(message)) Joined(message);
    return true;
  case kMsgSongFailed:
    if (IsAboutThisLoad(message)) Failed(message);
    return true;
  case kMsgOutputChanged:
    if (message.FindBool("silent", &fHasNoDevice) == B_OK) fEvents->StateChanged();
    return true;
  case kMsgFindDevices:
    fSound->FindDevices();
    return true;
  case kMsgDevices:
    TakeDevices(message);
    return true;
  case kMsgDeviceLost:
    DeviceLost(message);
    return true;
  case kMsgDeviceReturned:
    DeviceReturned(message);
    return true;
  default:
    return false;
  }
}

void TOwnTransport::TakeDevices(const BMessage& message) {
  fDevices.clear();
  TSoundDevice device;
  for (int32 i = 0; message.FindString("name", i, &device.name) == B_OK; ++i) {
    if (message.FindString("description", i, &device.description) == B_OK) fDevices.push_back(device);
  }
  fEvents->StateChanged();
}

void TOwnTransport::DeviceLost(const BMessage& message) {
  fDeviceError = player_text("Player_Err_No_Output", {message.GetString("device")});
  fEvents->ErrorOccurred(fDeviceError);
}

void TOwnTransport::DeviceReturned(const BMessage& message) {
  fEvents->ErrorResolved(std::exchange(fDeviceError, {}));
  fEvents->SongErrorOccurred(player_text("Player_Output_Back", {message.GetString("device")}));
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
  fEvents->SongIsHeard();
  fEvents->StateChanged();
  if (fResumeMs > 0) Seek(std::exchange(fResumeMs, 0));
  if (const auto part = std::exchange(fWaitingPart, {})) PlayPart(*part);
}

void TOwnTransport::Ended(int32 positionMs) {
  const std::string error = early_end(*fSongs->CurrentSong(), positionMs);
  if (!error.empty()) fEvents->SongErrorOccurred(error);
  PlayOn();
}

/** The queued song is taken unless the list or the modes have changed at the last moment. */
void TOwnTransport::Joined(const BMessage& message) {
  const int64 begun = message.GetInt64("next");
  const int32 endedMs = message.GetInt32("endedMs");
  const int32 next = fOrder.SongAfterEnd();
  const TSong* const song = fSongs->At(next);
  if (song == nullptr || TFollower{song->path, begun} != fFollower) {
    fSound->Stop();
    return Ended(endedMs);
  }
  const std::string error = early_end(*fSongs->CurrentSong(), endedMs);
  if (!error.empty()) fEvents->SongErrorOccurred(error);
  ForgetRepeat();
  Begin(next, !fPlayback.isPlaying, begun);
  fEvents->StateChanged();
}

void TOwnTransport::PlayOn() {
  const int32 next = fOrder.SongAfterEnd();
  fChoices.modes.stopsAfterSong = false;
  fOrder.SetModes(fChoices.modes);
  // After a song that failed while paused the next one waits too.
  if (next >= 0) return PlaySong(next, !fPlayback.isPlaying);
  fPlayback.isLoaded = false;
  fPlayback.isPlaying = false;
  fEvents->StateChanged();
}

void TOwnTransport::Failed(const BMessage& message) {
  TSong* const song = fSongs->Edit(fSongs->Current());
  song->error = file_error(song->path, message.GetString("reason"));
  fEvents->SongErrorOccurred(player_text("Player_Err_Cannot_Play", {song->path, song->error}));
  PlayOn();
}

const char* TOwnTransport::SoundProblem() const {
  if (fIsHanging) return "Player_Err_Sound_Hangs";
  return fHasNoDevice ? "Player_Err_Silent" : nullptr;
}

void TOwnTransport::Tick() {
  const bool isHeard = fPlayback.isLoaded && fLoadedLoad == fLoad;
  ++fTicks;
  if (const bool before = std::exchange(fIsHanging, fSound->IsHanging()); before != fIsHanging) fEvents->StateChanged();
  if (!isHeard) return;
  QueueFollower();
  if (fTicks % kTicksPerFileCheck == 0 && fMissingLoad != fLoad) WarnOfMissingFile();
}

void TOwnTransport::QueueFollower() {
  const std::string path = FollowerPath();
  if (path != fFollower.path) fFollower = {path, fSound->Follow(path)};
}

/** Near the end of a song, the next one of the album; else empty. */
std::string TOwnTransport::FollowerPath() {
  const bool isNearEnd = fPlayback.durationMs > 0 && fPlayback.durationMs - PositionMs() < kQueuedBeforeEndMs;
  if (!fChoices.sound.isGapless || !isNearEnd || fPlayback.repeatToMs >= 0) return {};
  const int32 next = fOrder.SongAfterEnd();
  const bool follows = next >= 0 && are_of_one_album(*fSongs->CurrentSong(), *fSongs->At(next));
  return follows ? fSongs->At(next)->path : std::string();
}

/** A file that was removed plays on to its end, but could not be played again: warns while the user can still act. */
void TOwnTransport::WarnOfMissingFile() {
  const std::string& path = fSongs->CurrentSong()->path;
  if (!is_file_path(path) || access(path.c_str(), F_OK) == 0 || errno != ENOENT) return;
  fMissingLoad = fLoad;
  fEvents->SongErrorOccurred(player_text("Player_Err_Song_Gone", {path}));
}
