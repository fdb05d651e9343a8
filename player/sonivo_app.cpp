#include "player/sonivo_app.h"

#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/app/roster.h"
#include "platform/support/log.h"
#include "player/front_end_host.h"
#include "player/player_messages.h"
#include "player/player_window.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr const char* kSignature = "application/x-vnd.Marvik-Sonivo";
constexpr const char* kEditorSignature = "application/x-vnd.KOREVA-VesmoEditor";
constexpr bigtime_t kTickUs = 100000;
constexpr int64 kTicksPerLook = 10;
/** The windows come up first: loading the audio library would hold them up for longer than all they need themselves. */
constexpr bigtime_t kFirstSongDelayUs = 250000;
/** "Previous" within the first moments of a song goes to the song before, later to the song's start. */
constexpr int32 kPreviousGoesBackMs = 3000;
constexpr int64 kSlowestPercent = 25;
constexpr int64 kFastestPercent = 200;

} // namespace

TSonivoApp::TSonivoApp(TCommandLine commandLine, const TSourceMaker& makeSource)
    : BApplication(kSignature), fCommandLine(std::move(commandLine)), fSource(makeSource(this)),
      fNowPlaying(fSource.get()), fHost(new TFrontEndHost(&fNowPlaying)) {
  for (const std::string& song : fCommandLine.songs) fPlaylist.Add(song);
  fHost->Run();
}

TSonivoApp::~TSonivoApp() {
  // Without a screen the player ends before it has begun, and the host is still there.
  if (fHost && fHost->Lock()) fHost->Quit();
}

void TSonivoApp::MessageReceived(BMessage* message) {
  int32 number = 0;
  switch (message->what) {
  case kMsgStart:
    return Start();
  case kMsgFirstSong:
    return PlayFirstSong();
  case kMsgPlayPause:
    return PlayPause();
  case kMsgNext:
    ForgetFaults();
    return PlayNeighbour(1);
  case kMsgPrevious:
    ForgetFaults();
    return PlayNeighbour(-1);
  case kMsgPlaySong:
    ForgetFaults();
    if (message->FindInt32("index", &number) == B_OK) PlaySong(number, false);
    return;
  case kMsgSeek:
    if (message->FindInt32("positionMs", &number) == B_OK) Seek(number);
    return;
  case kMsgSpeed:
    if (message->FindInt32("percent", &number) == B_OK) SetSpeed(number);
    return;
  case kMsgVolume:
    if (message->FindInt32("percent", &number) == B_OK) SetVolume(number);
    return;
  case kMsgAddSongs:
    ForgetFaults();
    return AddSongs(*message);
  case kMsgSongLoaded:
    return Loaded(*message);
  case kMsgSongEnded:
    return Ended(*message);
  case kMsgSongFailed:
    return Failed(*message);
  case kMsgTick:
    return Tick();
  case kMsgHandshake:
    return Handshake(*message);
  case kMsgWindowCloses:
    return CloseRequested();
  case B_REPLY:
    return WindowAnswered(*message);
  default:
    if (!HandleWish(*message) && !HandleScript(message)) BApplication::MessageReceived(message);
  }
}

void TSonivoApp::Start() {
  fWindow = new TPlayerWindow(BMessenger(this));
  // Before the plug-ins: their windows look for this one, to stand beside it and to follow it. They are made on threads
  // of their own, while this one's comes up.
  fWindow->Show();
  std::string faults; // shown together: each names another image
  for (const std::string& fault : fPlugins.LoadAll(plugin_folder())) faults += (faults.empty() ? "" : "\n") + fault;
  ShowLyrics();
  StateChanged();
  if (!faults.empty()) TellFault(faults);
  const BMessage firstSong(kMsgFirstSong);
  fStarter = std::make_unique<BMessageRunner>(BMessenger(this), &firstSong, kFirstSongDelayUs, 1);
  const BMessage tick(kMsgTick);
  fTicker = std::make_unique<BMessageRunner>(BMessenger(this), &tick, kTickUs);
}

void TSonivoApp::PlayFirstSong() {
  fStarter.reset();
  // The user may have been quicker.
  if (!fIsLoaded && fPlaylist.Count() > 0) PlaySong(0, fCommandLine.startsPaused);
}

void TSonivoApp::ShowLyrics() const {
  entry_ref ref;
  if (fCommandLine.lyrics.empty() || get_ref_for_path(fCommandLine.lyrics.c_str(), &ref) != B_OK) return;
  BMessage open(B_REFS_RECEIVED);
  open.AddRef("refs", &ref);
  BMessenger(kEditorSignature).SendMessage(&open, BMessenger(), 0);
}

void TSonivoApp::PlaySong(int32 index, bool paused) {
  if (!fPlaylist.SetCurrent(index)) return;
  TSong* const song = fPlaylist.CurrentSong();
  fIsLoaded = true;
  fState.isPlaying = !paused;
  fState.durationMs = song->durationMs;
  fLoad = fSource->Load(song->path, paused);
  StateChanged();
}

void TSonivoApp::PlayPause() {
  if (!fIsLoaded) return PlaySong(std::max(fPlaylist.Current(), int32{0}), false);
  fState.isPlaying = !fState.isPlaying;
  fSource->SetPaused(!fState.isPlaying);
  StateChanged();
}

void TSonivoApp::PlayNeighbour(int32 direction) {
  if (direction < 0 && fIsLoaded && fSource->PositionMs() > kPreviousGoesBackMs) return Seek(0);
  PlaySong(fPlaylist.Neighbour(direction), false);
}

void TSonivoApp::Seek(int64 positionMs) {
  if (!fIsLoaded) return;
  const auto bounded = static_cast<int32>(std::clamp<int64>(positionMs, 0, std::max(fState.durationMs, int32{0})));
  fSource->SeekTo(bounded);
  if (fWindow) fWindow->ShowPosition(bounded);
}

void TSonivoApp::SetSpeed(int64 percent) {
  fState.speedPercent = static_cast<int32>(std::clamp(percent, kSlowestPercent, kFastestPercent));
  fSource->SetSpeed(fState.speedPercent / 100.0);
  StateChanged();
}

void TSonivoApp::SetVolume(int32 percent) {
  fState.volumePercent = std::clamp(percent, int32{0}, int32{100});
  fSource->SetVolume(fState.volumePercent);
}

void TSonivoApp::AddSongs(const BMessage& message) {
  const bool wasEmpty = fPlaylist.Count() == 0;
  std::string path;
  for (int32 i = 0; message.FindString("path", i, &path) == B_OK; ++i) {
    if (fPlaylist.Add(path) == 0) TellFault("There is no song in " + path);
  }
  if (wasEmpty && fPlaylist.Count() > 0) return PlaySong(0, false);
  StateChanged();
}

bool TSonivoApp::IsAboutThisLoad(const BMessage& message) const {
  int64 load = 0;
  return message.FindInt64("load", &load) == B_OK && load == fLoad && fPlaylist.Current() >= 0;
}

void TSonivoApp::Loaded(const BMessage& message) {
  if (!IsAboutThisLoad(message)) return;
  TSong* const song = fPlaylist.CurrentSong();
  std::string title;
  message.FindString("title", &title);
  message.FindString("artist", &song->artist);
  message.FindInt32("durationMs", &song->durationMs);
  if (!title.empty()) song->title = title;
  song->played = true;
  song->failed = false;
  fState.durationMs = song->durationMs;
  fLoadedLoad = fLoad;
  StateChanged();
}

void TSonivoApp::Ended(const BMessage& message) {
  if (!IsAboutThisLoad(message)) return;
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
  TSong* const song = fPlaylist.CurrentSong();
  song->failed = true;
  TellFault("Cannot play " + song->path + ": " + reason);
  Ended(message);
}

void TSonivoApp::TellFault(const std::string& fault) {
  log_error("player", fault);
  fFaults.Add(fault);
  StateChanged();
}

void TSonivoApp::ForgetFaults() {
  if (fFaults.Clear()) StateChanged();
}

void TSonivoApp::Tick() {
  if (fWindow) fWindow->ShowPosition(fSource->PositionMs());
  if (++fTicks % kTicksPerLook == 0) LookForFile();
}

/** What is open may play to its end, but the next time the song would fail: the user should know while he can act. */
void TSonivoApp::LookForFile() {
  if (!fIsLoaded || fLoadedLoad != fLoad || fMissedLoad == fLoad) return;
  const std::string& path = fPlaylist.CurrentSong()->path;
  if (access(path.c_str(), F_OK) == 0 || errno != ENOENT) return;
  fMissedLoad = fLoad;
  TellFault("The file of the song that is playing is gone: " + path);
}

void TSonivoApp::StateChanged() {
  const TSong* const song = fPlaylist.CurrentSong();
  const int32 playing = fState.isPlaying ? TInfoRecord::kPlaying : TInfoRecord::kPaused;
  const int32 state = fIsLoaded ? playing : TInfoRecord::kStopped;
  // Until its tags are read a song has only its file's name, and front ends must not take that for another song.
  fNowPlaying.Set(state, fState.durationMs, song && song->played ? song->title : std::string());
  fState.faults = fFaults.Text();
  fState.songs = fPlaylist.Songs();
  fState.current = fPlaylist.Current();
  if (fWindow == nullptr) return;
  fWindow->ShowState(fState);
  const std::string title = song ? "Sonivo – " + song->title : "Sonivo";
  if (fWindow->Lock()) {
    if (fWindow->Title() != title) fWindow->SetTitle(title.c_str());
    fWindow->Unlock();
  }
}

void TSonivoApp::SongLoaded(int64 load, const TSongTags& tags) {
  BMessage message(kMsgSongLoaded);
  message.AddInt64("load", load);
  message.AddString("title", tags.title);
  message.AddString("artist", tags.artist);
  message.AddInt32("durationMs", tags.durationMs);
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
