#include "player/app/sonivo_app.h"

#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/app/roster.h"
#include "platform/support/log.h"
#include "player/frontend/front_end_host.h"
#include "player/list/requests.h"
#include "player/model/player_messages.h"
#include "player/window/player_window.h"
#include "plugin/message_codes.h"

namespace {

constexpr const char* kSilent = "No sound device: playing silently";
/** What other programs may send; docs/protocol.md says what it means. */
const std::vector<uint32> kOffered = {kMsgHostHandshake, kMsgHostSeek,      kMsgHostSeekBy, kMsgHostPlayPause,
                                      kMsgHostSpeedBy,   kMsgHostMarks,     kMsgHandedOver, B_COUNT_PROPERTIES,
                                      B_GET_PROPERTY,    B_EXECUTE_PROPERTY};
/** For any call into a plug-in, which only posts messages; an end with windows to close takes a second on a slow
    machine. */
constexpr bigtime_t kPluginPatienceUs = 10000000;
constexpr int64 kFirstSearch = 1; // for the songs of the command line
constexpr bigtime_t kTickUs = 100000;
/** The windows come up first: loading the audio library would hold them up for longer than all they need themselves. */
constexpr bigtime_t kFirstSongDelayUs = 250000;
/** And only when the song has begun, the plug-ins that are not the editor. */
constexpr bigtime_t kOtherPluginsDelayUs = 500000;

} // namespace

TSonivoApp::TSonivoApp(TCommandLine commandLine, const TSourceMaker& makeSource)
    : BApplication(kSignature, kOffered), fCommandLine(std::move(commandLine)),
      fSearch([player = BMessenger(this)] { ask(player, kMsgSongsFound); }), fSource(makeSource(this)),
      fBus(BMessenger(this), [this] { return fSource->PositionMs(); }), fNowPlaying(fSource.get()),
      fHost(new TFrontEndHost(&fNowPlaying)),
      fPlugins([player = BMessenger(this)] { ask(player, kMsgLookAtPlugins); }, kPluginPatienceUs) {
  fWantedSource = fCommandLine.source;
  if (!fCommandLine.songs.empty())
    fAwaited[fSearch.Begin(fCommandLine.songs)] = {.areHandedOver = true, .startPaused = StartsPaused()};
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
  case kMsgOtherPlugins:
    return LoadOtherPlugins();
  case kMsgPlayPause:
    return PlayPause();
  case kMsgNext:
    UserChoseSong();
    return PlayNeighbour(1);
  case kMsgPrevious:
    UserChoseSong();
    return PlayNeighbour(-1);
  case kMsgPlaySong:
    UserChoseSong();
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
  case kMsgRepeatFrom:
  case kMsgRepeatTo:
  case kMsgRepeatOff:
    return SetRepeat(message->what);
  case kMsgSongLoaded:
    return Loaded(*message);
  case kMsgSongEnded:
    return Ended(*message);
  case kMsgSongFailed:
    return Failed(*message);
  case kMsgOutputChanged:
    return TakeOutput(*message);
  case kMsgTick:
    return Tick();
  case kMsgHostHandshake:
    return Handshake(*message);
  case kMsgWindowCloses:
    return CloseRequested();
  case kMsgLookAtWindows:
    return LookAtAskedWindows();
  case B_REPLY:
    return WindowAnswered(*message);
  default:
    if (!HandleList(*message) && !HandleBus(*message) && !HandlePlugin(*message) && !HandleWish(*message) &&
        !HandleScript(message))
      BApplication::MessageReceived(message);
  }
}

void TSonivoApp::Start() {
  fWindow = new TPlayerWindow(BMessenger(this));
  // Before the plug-ins: their windows look for this one, to stand beside it and to follow it. They are made on threads
  // of their own, while this one's comes up.
  fWindow->Show();
  LoadEditor();
  ShowLyrics(fCommandLine.lyrics);
  StateChanged();
  const BMessage firstSong(kMsgFirstSong);
  fStarter = std::make_unique<BMessageRunner>(BMessenger(this), &firstSong, kFirstSongDelayUs, 1);
}

void TSonivoApp::PlayFirstSong() {
  const BMessage others(kMsgOtherPlugins);
  fStarter = std::make_unique<BMessageRunner>(BMessenger(this), &others, kOtherPluginsDelayUs, 1);
  const TSong* const first = fPlaylist.At(0);
  const std::string wanted = first ? first->path : std::string();
  const int32 positionMs = FindKeptList();
  StateChanged();
  if (fIsLoaded) return; // the user was quicker
  if (!wanted.empty()) return PlaySong(fPlaylist.GoodFrom(fPlaylist.Find(wanted)), StartsPaused());
  if (fAwaited.contains(kFirstSearch)) {
    fPlayedSearch = kFirstSearch;
    return;
  }
  if (fPlaylist.Current() < 0) return;
  PlaySong(fPlaylist.Current(), true);
  fResumeMs = positionMs;
}

bool TSonivoApp::StartsPaused() const {
  return fCommandLine.startsPaused || !fWantedSource.empty();
}

void TSonivoApp::TellFault(const std::string& fault) {
  log_error("player", fault);
  fFaults.Add(fault);
  StateChanged();
}

void TSonivoApp::ForgetFaults() {
  if (fFaults.Clear()) StateChanged();
}

/** Whatever was to be played before that. */
void TSonivoApp::UserChoseSong() {
  fPlayedSearch = 0;
  ForgetFaults();
}

void TSonivoApp::StateChanged() {
  fState.isLoaded = fIsLoaded;
  fState.isSearching = !fAwaited.empty();
  fState.faults = fFaults.Text();
  if (fIsSilent) fState.faults += (fState.faults.empty() ? "" : "\n") + std::string(kSilent);
  fState.songs = fPlaylist.Songs();
  fState.current = fPlaylist.Current();
  Keep();
  TPlayerState shown = fOther ? StateOfOther() : fState;
  const TSong* const song = shown_song(shown);
  shown.marksMs = song && song->played && cut_title(song->title) == fMarkedTitle ? fMarksMs : nullptr;
  TellSong(shown);
  if (fWindow == nullptr) return;
  fWindow->ShowState(shown);
  const std::string title = song ? "Sonivo – " + song->title : "Sonivo";
  if (fWindow->Lock()) {
    if (fWindow->Title() != title) fWindow->SetTitle(title.c_str());
    fWindow->Unlock();
  }
}

void TSonivoApp::TellSong(const TPlayerState& shown) {
  const TSong* const song = shown_song(shown);
  const int32 playing = shown.isPlaying ? TInfoRecord::kPlaying : TInfoRecord::kPaused;
  const int32 state = shown.isLoaded ? playing : TInfoRecord::kStopped;
  // Until its tags are read a song has only its file's name, and front ends must not take that for another song.
  fNowPlaying.Set(state, shown.durationMs, song && song->played ? song->title : std::string());
  fBus.Show(OwnStatus());
  TickWhilePlaying(shown.isPlaying);
}

/** Nobody is woken for a song that stands still. */
void TSonivoApp::TickWhilePlaying(bool isPlaying) {
  if (!isPlaying || fWindow == nullptr) return fTicker.reset();
  if (fTicker) return;
  const BMessage tick(kMsgTick);
  fTicker = std::make_unique<BMessageRunner>(BMessenger(this), &tick, kTickUs);
}
