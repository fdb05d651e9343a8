/** What plays: what the user does to it, and what the sound tells. */

#include "platform/app/message.h"
#include "player/app/sonivo_app.h"
#include "player/list/tag_fields.h"
#include "player/model/player_messages.h"
#include "player/model/song_address.h"
#include "player/model/song_text.h"
#include "player/window/player_window.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <tuple>
#include <utility>

namespace {

constexpr int64 kTicksPerLook = 10;
/** "Previous" within the first moments of a song goes to the song before, later to the song's start. */
constexpr int32 kPreviousGoesBackMs = 3000;
/** A range that is shorter is a key pressed twice. */
constexpr int32 kShortestRepeatMs = 50;
constexpr int64 kSlowestPercent = 25;
constexpr int64 kFastestPercent = 200;

} // namespace

void TSonivoApp::PlaySong(int32 index, bool paused) {
  if (!fPlaylist.SetCurrent(index)) return;
  UseOwnSound(); // whoever chooses a song of the list wants to hear it
  const TSong* const song = fPlaylist.CurrentSong();
  fIsLoaded = true;
  fResumeMs = 0;
  fState.isPlaying = !paused;
  fState.durationMs = song->durationMs;
  ForgetRepeat();
  fLoad = fSource->Load(song->path, paused);
  fSource->SetVolume(fState.volumePercent);
  StateChanged();
}

void TSonivoApp::PlayPause() {
  if (fOther) return fBus.SetPaused(fOther->state == TInfoRecord::kPlaying);
  if (!fIsLoaded) return PlaySong(std::max(fPlaylist.Current(), int32{0}), false);
  fState.isPlaying = !fState.isPlaying;
  fSource->SetPaused(!fState.isPlaying);
  StateChanged();
}

void TSonivoApp::StopPlaying() {
  if (fIsLoaded) fSource->Stop();
  fPlayedSearch = 0;
  fLoad = 0; // what the sound still tells is about no song any more
  fIsLoaded = false;
  fState.isPlaying = false;
  fState.durationMs = 0;
  ForgetRepeat();
  StateChanged();
  if (fWindow) fWindow->ShowPosition(0);
}

void TSonivoApp::PlayNeighbour(int32 direction) {
  if (fOther) return fBus.Skip(direction);
  if (direction < 0 && fIsLoaded && fSource->PositionMs() > kPreviousGoesBackMs) return Seek(0);
  PlaySong(fPlaylist.Neighbour(direction), false);
}

void TSonivoApp::Seek(int64 positionMs) {
  if (!fIsLoaded && !fOther) return;
  const int32 durationMs = fOther ? fOther->song.durationMs : fState.durationMs;
  const auto bounded = static_cast<int32>(std::clamp<int64>(positionMs, 0, std::max(durationMs, int32{0})));
  Sound().SeekTo(bounded);
  if (!fOther) fBus.TellSeeked(bounded);
  if (fWindow) fWindow->ShowPosition(bounded);
}

void TSonivoApp::SetSpeed(int64 percent) {
  percent = std::clamp(percent, kSlowestPercent, kFastestPercent);
  if (fOther) return fBus.SetSpeed(static_cast<double>(percent) / 100);
  fState.speedPercent = static_cast<int32>(percent);
  fSource->SetSpeed(fState.speedPercent / 100.0);
  StateChanged();
}

void TSonivoApp::SetVolume(int32 percent) {
  percent = std::clamp(percent, int32{0}, int32{100});
  if (fOther) return fBus.SetVolume(percent);
  fState.volumePercent = percent;
  fSource->SetVolume(fState.volumePercent);
  StateChanged();
}

/** The bounds in either order: whoever goes back before setting the end means what lies between. */
void TSonivoApp::SetRepeat(uint32 bound) {
  if (!fIsLoaded || fOther) return;
  const int32 positionMs = fSource->PositionMs();
  int32& fromMs = fState.repeatFromMs;
  int32& toMs = fState.repeatToMs;
  if (bound == kMsgRepeatOff) fromMs = toMs = -1;
  if (bound == kMsgRepeatFrom) {
    fromMs = positionMs;
    if (toMs <= fromMs) toMs = -1;
  }
  if (bound == kMsgRepeatTo) std::tie(fromMs, toMs) = std::minmax({std::max(fromMs, int32{0}), positionMs});
  if (toMs - fromMs < kShortestRepeatMs) toMs = -1;
  fSource->SetRepeat(fromMs, toMs);
  StateChanged();
}

void TSonivoApp::ForgetRepeat() {
  if (fState.repeatToMs >= 0) fSource->SetRepeat(-1, -1);
  fState.repeatFromMs = fState.repeatToMs = -1;
}

bool TSonivoApp::IsAboutThisLoad(const BMessage& message) const {
  int64 load = 0;
  return message.FindInt64("load", &load) == B_OK && load == fLoad && fPlaylist.Current() >= 0;
}

void TSonivoApp::Loaded(const BMessage& message) {
  if (!IsAboutThisLoad(message)) return;
  TSong* const song = fPlaylist.Edit(fPlaylist.Current());
  take_tags(tags_in(message), song);
  song->played = true;
  song->fault.clear();
  fState.durationMs = song->durationMs;
  fLoadedLoad = fLoad;
  StateChanged();
  if (fResumeMs > 0) Seek(std::exchange(fResumeMs, 0));
}

void TSonivoApp::Ended(const BMessage& message) {
  if (!IsAboutThisLoad(message)) return;
  const std::string fault = early_end(*fPlaylist.CurrentSong(), fSource->PositionMs());
  if (!fault.empty()) TellFault(fault);
  PlayOn();
}

void TSonivoApp::PlayOn() {
  const int32 next = fPlaylist.Neighbour(1);
  // After a song that failed while paused the next one waits too.
  if (next >= 0) return PlaySong(next, !fState.isPlaying);
  fIsLoaded = false;
  fState.isPlaying = false;
  StateChanged();
}

void TSonivoApp::Failed(const BMessage& message) {
  if (!IsAboutThisLoad(message)) return;
  std::string reason;
  message.FindString("reason", &reason);
  TSong* const song = fPlaylist.Edit(fPlaylist.Current());
  song->fault = fault_of_file(song->path, reason);
  TellFault("Cannot play " + song->path + ": " + song->fault);
  PlayOn();
}

void TSonivoApp::TakeOutput(const BMessage& message) {
  if (message.FindBool("silent", &fIsSilent) == B_OK) StateChanged();
}

void TSonivoApp::Tick() {
  if (fWindow) fWindow->ShowPosition(Sound().PositionMs());
  if (++fTicks % kTicksPerLook == 0) LookForFile();
}

/** What is open may play to its end, but the next time the song would fail: the user should know while he can act. */
void TSonivoApp::LookForFile() {
  if (!fIsLoaded || fLoadedLoad != fLoad || fMissedLoad == fLoad) return;
  const std::string& path = fPlaylist.CurrentSong()->path;
  if (!is_file_path(path) || access(path.c_str(), F_OK) == 0 || errno != ENOENT) return;
  fMissedLoad = fLoad;
  TellFault("The file being played was moved or deleted: " + path);
}

void TSonivoApp::SongLoaded(int64 load, const TSongTags& tags) {
  BMessage message(kMsgSongLoaded);
  message.AddInt64("load", load);
  add_tags(&message, tags);
  PostMessage(&message);
}

void TSonivoApp::SongEnded(int64 load) {
  BMessage message(kMsgSongEnded);
  message.AddInt64("load", load);
  PostMessage(&message);
}

void TSonivoApp::SongFailed(int64 load, const std::string& reason) {
  BMessage message(kMsgSongFailed);
  message.AddInt64("load", load);
  message.AddString("reason", reason);
  PostMessage(&message);
}

void TSonivoApp::OutputChanged(bool isSilent) {
  BMessage message(kMsgOutputChanged);
  message.AddBool("silent", isSilent);
  PostMessage(&message);
}
