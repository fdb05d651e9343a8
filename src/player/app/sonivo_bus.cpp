/** The player and the desktop's message bus: what is shown there, and another player there as the source of the song.
 */

#include "platform/app/message.h"
#include "player/app/sonivo_app.h"
#include "player/model/bus_messages.h"
#include "player/model/player_messages.h"
#include "player/model/song_text.h"
#include "player/window/player_window.h"

#include <algorithm>

bool TSonivoApp::HandleBus(const BMessage& message) {
  int32 number = 0;
  std::string id;
  switch (message.what) {
  case kMsgBusPlay:
  case kMsgBusPause:
    if (fState.isPlaying != (message.what == kMsgBusPlay)) PlayPause();
    return true;
  case kMsgBusStop:
    StopPlaying();
    return true;
  case kMsgBusSeekBy:
    if (message.FindInt32("byMs", &number) == B_OK) SeekOver(number);
    return true;
  case kMsgBusRaise:
    RaiseWindow();
    return true;
  case kMsgBusPlayers:
    TakePlayers(message);
    return true;
  case kMsgBusOtherIs:
    TakeOther(message);
    return true;
  case kMsgCover:
    TakeCover(message);
    return true;
  case kMsgChooseSource:
    UserChoseSong();
    if (message.FindString("id", &id) == B_OK) ChooseSource(id);
    return true;
  default:
    return false;
  }
}

/** Beyond its end a song is over. */
void TSonivoApp::SeekOver(int32 byMs) {
  const int64 positionMs = int64{fSource->PositionMs()} + byMs;
  if (fIsLoaded && fState.durationMs > 0 && positionMs > fState.durationMs) return PlayNeighbour(1);
  Seek(positionMs);
}

void TSonivoApp::RaiseWindow() const {
  if (fWindow == nullptr || !fWindow->Lock()) return;
  fWindow->Activate();
  fWindow->Unlock();
}

TSongControl& TSonivoApp::Sound() {
  return fOther ? static_cast<TSongControl&>(fBus) : *fSource;
}

void TSonivoApp::ChooseSource(const std::string& id) {
  fWantedSource.clear();
  if (id.empty()) return UseOwnSound();
  if (fOther && fOther->id == id) return;
  const auto source =
      std::find_if(fState.sources.begin(), fState.sources.end(), [&](const TSourceName& s) { return s.id == id; });
  if (source == fState.sources.end()) return TellFault("No player “" + id + "” on the session bus");
  if (fIsLoaded && fState.isPlaying) {
    fSource->SetPaused(true);
    fState.isPlaying = false;
  }
  fOther.emplace();
  fOther->id = id;
  fOther->name = source->name;
  fBus.Choose(id);
  fNowPlaying.SetSound(&fBus);
  StateChanged();
}

void TSonivoApp::UseOwnSound() {
  if (!fOther) return;
  fOther.reset();
  fBus.Choose({});
  fNowPlaying.SetSound(fSource.get());
  StateChanged();
  if (fWindow) fWindow->ShowPosition(fSource->PositionMs());
}

void TSonivoApp::TakePlayers(const BMessage& message) {
  message.FindBool("reachable", &fState.isBusReachable);
  fState.sources.clear();
  TSourceName source;
  for (int32 i = 0; message.FindString("id", i, &source.id) == B_OK; ++i) {
    if (message.FindString("name", i, &source.name) == B_OK) fState.sources.push_back(source);
    if (fOther && fOther->id == source.id) fOther->name = source.name; // it has said meanwhile what it is called
  }
  const auto isThere = [&](const std::string& id) {
    return std::any_of(fState.sources.begin(), fState.sources.end(), [&](const TSourceName& s) { return s.id == id; });
  };
  if (fOther && !isThere(fOther->id)) {
    const std::string lost = fState.isBusReachable ? fOther->name + " was closed."
                                                   : "The session bus was lost, and " + fOther->name + " with it.";
    UseOwnSound();
    TellFault(lost + " The source is this player again.");
  }
  if (isThere(fWantedSource)) {
    UserChoseSong();
    return ChooseSource(std::string(fWantedSource));
  }
  if (!fWantedSource.empty()) {
    TellFault(fState.isBusReachable
                  ? "Waiting for the player “" + fWantedSource + "”; its song is used as soon as it opens"
                  : "Without a session bus other players cannot be used");
  }
  StateChanged();
}

void TSonivoApp::TakeOther(const BMessage& message) {
  std::string id;
  if (!fOther || message.FindString("id", &id) != B_OK || id != fOther->id) return;
  TSong& song = fOther->song;
  const bool wasSilent = fOther->isSilent;
  message.FindString("title", &song.title);
  message.FindString("artist", &song.artist);
  message.FindString("path", &song.path);
  message.FindInt32("durationMs", &song.durationMs);
  message.FindInt32("state", &fOther->state);
  message.FindInt32("speedPercent", &fOther->speedPercent);
  message.FindInt32("volumePercent", &fOther->volumePercent);
  message.FindBool("silent", &fOther->isSilent);
  song.title = clean_text(song.title);
  song.artist = clean_text(song.artist);
  song.played = true;
  if (fOther->isSilent && fOther->state == TInfoRecord::kPlaying) fOther->state = TInfoRecord::kPaused;
  if (fOther->isSilent && !wasSilent) return TellFault(fOther->name + " is not responding");
  if (wasSilent && !fOther->isSilent) ForgetFaults();
  StateChanged();
  if (fWindow) fWindow->ShowPosition(fBus.PositionMs());
}

/** What the window shows while another player is the source. */
TPlayerState TSonivoApp::StateOfOther() const {
  TPlayerState state = fState;
  state.source = fOther->id;
  state.otherSong = std::make_shared<const TSong>(fOther->song);
  state.isLoaded = fOther->state != TInfoRecord::kStopped;
  state.isPlaying = fOther->state == TInfoRecord::kPlaying;
  state.durationMs = fOther->song.durationMs;
  state.speedPercent = fOther->speedPercent;
  state.volumePercent = fOther->volumePercent;
  state.repeatFromMs = state.repeatToMs = -1;
  return state;
}

/** On the bus this player tells of its own sound alone: two that were each other's source would else go round. */
TOwnStatus TSonivoApp::OwnStatus() const {
  TOwnStatus status;
  const TSong* const song = fPlaylist.CurrentSong();
  status.canPlay = fPlaylist.Count() > 0 && !fOther;
  status.speedPercent = fState.speedPercent;
  status.volumePercent = fState.volumePercent;
  if (song == nullptr || !fIsLoaded || fOther) return status;
  status.state = fState.isPlaying ? TInfoRecord::kPlaying : TInfoRecord::kPaused;
  status.track = fLoad;
  status.title = song->title;
  status.artist = song->artist;
  status.path = song->path;
  if (song->path == fCoverSong) status.picture = fCoverFile;
  status.durationMs = fState.durationMs;
  status.canGoNext = fPlaylist.Neighbour(1) >= 0;
  status.canGoPrevious = true; // at least to its own beginning
  return status;
}

void TSonivoApp::TakeCover(const BMessage& message) {
  message.FindString("path", &fCoverSong);
  message.FindString("file", &fCoverFile);
  fBus.Show(OwnStatus());
}
