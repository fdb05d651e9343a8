#include "player/app/sonivo_app.h"

#include "platform/display/display.h"
#include "platform/display/display_thread.h"
#include "platform/interface/window.h"
#include "platform/support/cut_text.h"
#include "platform/support/log.h"
#include "player/app/open_folder.h"
#include "player/app/open_questions.h"
#include "player/app/scripting.h"
#include "player/app/transport_commands.h"
#include "player/frontend/front_end_host.h"
#include "player/icon/program_icon.h"
#include "player/model/bus_messages.h"
#include "player/model/file_kind.h"
#include "player/model/player_messages.h"
#include "player/model/song_address.h"
#include "player/texts/chosen_language.h"
#include "player/texts/player_texts.h"
#include "player/window/player_window.h"
#include "plugin/message_codes.h"

#include <malloc.h>

#include <cstdlib>
#include <utility>

namespace {

/** What other programs may send; docs/protocol.md says what it means. */
const std::vector<uint32> kOffered = {kMsgHostHandshake, kMsgHostSeek,       kMsgHostSeekBy,  kMsgHostPlayPart,
                                      kMsgHostPlayPause, kMsgHostCountIn,    kMsgHostSpeedBy, kMsgHostMarks,
                                      kMsgHandedOver,    B_COUNT_PROPERTIES, B_GET_PROPERTY,  B_EXECUTE_PROPERTY};
/** One line, however many files there are. */
std::string refusal_of(const std::vector<std::string>& files) {
  const std::string first(cut_text(files.front()));
  if (files.size() == 1) return player_text("Player_Err_Not_Media", {first});
  return player_text("Player_Err_Not_Media_Many", {std::to_string(files.size()), first});
}

constexpr const char* kLanguageFolder = "/Language"; // in that of the plug-ins
constexpr int64 kFirstSearch = 1;                    // for the songs of the command line
constexpr bigtime_t kPositionIntervalUs = 100000;
/** Windows first: loading the audio library takes longer than everything they need themselves. */
constexpr bigtime_t kFirstSongDelayUs = 250000;
/** And only when the song has begun, if there is one, the plug-ins other than the editor. */
constexpr bigtime_t kOtherPluginsDelayUs = 500000;

bool starts_paused(const TCommandLine& line) {
  return line.startsPaused || !line.source.empty();
}

} // namespace

TSonivoApp::TSonivoApp(TCommandLine commandLine, const TSourceMaker& makeSource)
    : BApplication(kSignature, kOffered), fCommandLine(std::move(commandLine)), fSoundMessages(BMessenger(this)),
      fOwn(&fSongs, makeSource(&fSoundMessages), this),
      fBus(BMessenger(this), [sound = fOwn.Sound()] { return sound->PositionMs(); }), fNowPlaying(fOwn.Sound()),
      fSource(&fOwn, &fBus, &fNowPlaying, this, fCommandLine.source), fList(&fSongs, &fOwn, BMessenger(this), this),
      fFolders(BMessenger(this), &fList, this), fSaver(BMessenger(this)), fChoiceSaver(BMessenger(this)),
      fKeptWindow(BMessenger(this)), fPlugins(BMessenger(this), this), fCloser(BMessenger(this)),
      fHost(new TFrontEndHost(&fNowPlaying)), fStartTimer(BMessenger(this)), fPositionTimer(BMessenger(this)) {
  if (!fCommandLine.songs.empty()) fList.Open(fCommandLine.songs, starts_paused(fCommandLine));
  fHost->Run();
}

TSonivoApp::~TSonivoApp() {
  // Without a screen the player ends before it has begun, and the host is still there.
  if (fHost && fHost->Lock()) fHost->Quit();
}

void TSonivoApp::MessageReceived(BMessage* message) {
  if (message->what == kMsgHostHandshake) return fHost->AnswerHandshake(*message);
  const TScriptedList scripted{fSongs, fSource.OtherSong()};
  const auto execute = [this](int32 index) {
    fList.CancelPlay();
    if (!fSource.IsOther()) return fOwn.PlaySong(index, false);
    if (index == 0) fBus.SetPaused(false);
  };
  const bool isHandled = HandleProgress(*message) || HandleChoice(*message) || HandleDesktop(*message) ||
                         handle_transport_command(*message, &fSource.Transport()) || fOwn.Handle(*message) ||
                         fSource.Handle(*message) || fList.Handle(*message) || fFolders.Handle(*message) ||
                         fPlugins.Handle(*message) || handle_script(message, scripted, execute);
  if (!isHandled) BApplication::MessageReceived(message);
}

/** Start, timers and end. */
bool TSonivoApp::HandleProgress(const BMessage& message) {
  switch (message.what) {
  case kMsgPrepare:
    Prepare();
    return true;
  case kMsgStart:
    Start();
    return true;
  case kMsgFirstSong:
    PlayFirstSong();
    return true;
  case kMsgOtherPlugins:
    LoadOthers();
    return true;
  case kMsgTick:
    PositionJumped(fSource.Transport().PositionMs());
    fOwn.Tick();
    return true;
  case kMsgKeep:
    SaveList();
    return true;
  case kMsgKeepChoices:
    SaveChoices();
    return true;
  case kMsgWindowPlaced:
    fKeptWindow.TakePlace(message);
    return true;
  case kMsgKeepWindow:
    fKeptWindow.SaveChanges();
    return true;
  case kMsgLookAtPlugins:
    fPlugins.Proceed();
    if (fPlugins.HasEnded()) EndAfterPlugins();
    return true;
  case kMsgWindowCloses:
    CloseRequested();
    return true;
  case kMsgCloseButton:
    CloseButtonPressed();
    return true;
  case kMsgLookAtWindows:
    fCloser.CheckWindows();
    EndIfAgreed();
    return true;
  case B_REPLY:
    fCloser.TakeAnswer(message);
    EndIfAgreed();
    return true;
  default:
    return false;
  }
}

/** The choice of the song, and its marks. */
bool TSonivoApp::HandleChoice(const BMessage& message) {
  int32 index = 0;
  switch (message.what) {
  case kMsgNext:
  case kMsgPrevious:
    UserChose();
    fSource.Transport().Skip(message.what == kMsgNext ? 1 : -1);
    return true;
  case kMsgPlaySong:
    UserChose();
    if (message.FindInt32("index", &index) == B_OK) fOwn.PlaySong(index, false);
    return true;
  case kMsgChoose:
    Choose(message);
    return true;
  case kMsgSongLyrics:
    for (const std::string& path : paths_in(message)) fPlugins.ShowLyricsOf(path);
    return true;
  case kMsgDropFiles:
    TakeDrop(message);
    return true;
  case kMsgHandedOver:
    TakeOver(message);
    return true;
  case kMsgHostMarks:
    if (fMarks.Take(message)) StateChanged();
    return true;
  case kMsgHostCountIn:
    if (!fSource.IsOther()) fOwn.CountIn(message);
    return true;
  default:
    return false;
  }
}

/** Requests from the message bus, which concern this player's own sound; and the cover shown there. */
bool TSonivoApp::HandleDesktop(const BMessage& message) {
  int32 byMs = 0;
  switch (message.what) {
  case kMsgBusPlay:
  case kMsgBusPause:
    if (fOwn.Playback().isPlaying != (message.what == kMsgBusPlay)) fSource.Transport().PlayPause();
    return true;
  case kMsgBusNext:
  case kMsgBusPrevious:
    UserChose();
    fSource.Transport().SkipAsItIs(message.what == kMsgBusNext ? 1 : -1);
    return true;
  case kMsgBusStop:
    fList.CancelPlay();
    fOwn.Stop();
    return true;
  case kMsgBusSeekBy:
    if (message.FindInt32("byMs", &byMs) == B_OK) fOwn.SeekBy(byMs);
    return true;
  case kMsgBusRaise:
    BringToFront();
    return true;
  case kMsgBusTray:
    TakeTray(message);
    return true;
  case kMsgShowInFolder:
    for (const std::string& path : paths_in(message)) fBus.ShowInFolder(path);
    return true;
  case kMsgBusNoFileManager:
    for (const std::string& path : paths_in(message)) open_folder_of(path, BMessenger(this));
    return true;
  case kMsgFolderClosed:
    for (const std::string& path : paths_in(message)) ErrorOccurred(player_text("Player_Err_No_File_Manager", {path}));
    return true;
  case kMsgHostLanguage:
    TakeLanguage(message);
    return true;
  case kMsgCover:
    fCover.song = message.GetString("path", fCover.song);
    fCover.file = message.GetString("file", fCover.file);
    fBus.Show(OwnStatus());
    return true;
  default:
    return false;
  }
}

void TSonivoApp::Prepare() {
  std::string error; // reported when the plug-ins are loaded
  load_player_texts(chosen_language_file(plugin_folder(&error) + kLanguageFolder));
  fKeptWindow.Restore();
}

void TSonivoApp::Start() {
  fWindow = new TPlayerWindow(BMessenger(this), fKeptWindow.OpeningFrame(), fKeptWindow.IsMaximized());
  // Before the plug-ins: their windows look for this one, which they are placed next to and follow. They are made on
  // threads of their own while this one comes up.
  fWindow->Show();
  fPlugins.LoadEditor();
  fPlugins.ShowLyrics(fCommandLine.lyrics);
  StateChanged();
  fStartTimer.StartOnce(kMsgFirstSong, kFirstSongDelayUs);
}

void TSonivoApp::PlayFirstSong() {
  const TSong* const first = fSongs.At(0);
  const std::string wanted = first ? first->path : std::string();
  const TKeptList kept = fSaver.Restore(&fSongs);
  fOwn.RestoreVolume(kept.volumePercent);
  fOwn.SetChoices(fChoiceSaver.Load());
  StateChanged();
  if (fSongs.Count() == 0) {
    LoadOthers();
  } else {
    fStartTimer.StartOnce(kMsgOtherPlugins, kOtherPluginsDelayUs);
  }
  if (fOwn.Playback().isLoaded) return; // the user was quicker
  if (!wanted.empty()) return fOwn.PlaySong(fSongs.GoodFrom(fSongs.Find(wanted)), starts_paused(fCommandLine));
  if (!fList.PlayWhenFound(kFirstSearch)) fOwn.PlaySong(fSongs.Current(), true, kept.positionMs);
}

void TSonivoApp::LoadOthers() {
  fPlugins.LoadOthers();
  fBus.Start();
  fFolders.Start(fOwn.Choices().watchedFolders);
  show_program_icon();
  // Returns the memory that only the start needed.
  display::post([] { malloc_trim(0); });
}

void TSonivoApp::TakeDrop(const BMessage& message) {
  std::vector<std::string> songs;
  std::vector<std::string> lyrics;
  std::vector<std::string> others;
  for (std::string& path : paths_in(message)) {
    const TDroppedKind kind = file_kind(path);
    auto& group = kind == TDroppedKind::kSong ? songs : kind == TDroppedKind::kLyrics ? lyrics : others;
    group.push_back(std::move(path));
  }
  BMessage add(message);
  add.what = kMsgAddSongs;
  add.RemoveName("path");
  for (const std::string& path : songs) add.AddString("path", path);
  if (!songs.empty()) fList.Handle(add);
  if (!lyrics.empty()) fPlugins.ShowLyrics(local_path(lyrics.front()));
  if (!others.empty()) ErrorOccurred(refusal_of(others));
}

/** The plug-ins have loaded another language. */
void TSonivoApp::TakeLanguage(const BMessage& message) {
  std::string path;
  std::string error;
  if (message.FindString("path", &path) != B_OK) return;
  if (!load_player_texts(named_language_file(plugin_folder(&error) + kLanguageFolder, path)) || !fWindow) return;
  fWindow->LanguageChanged();
  StateChanged();
}

/** The songs of another start of the program are played here. */
void TSonivoApp::TakeOver(const BMessage& message) {
  message.SendReply(B_REPLY);
  UserChose();
  if (std::vector<std::string> paths = paths_in(message); !paths.empty())
    fList.PlayWhenFound(fList.Open(std::move(paths), message.GetBool("paused")));
  std::string lyrics;
  if (message.FindString("lyrics", &lyrics) == B_OK) fPlugins.ShowLyrics(lyrics);
  BringToFront();
  StateChanged();
}

void TSonivoApp::ErrorOccurred(const std::string& error) {
  log_error("player", error);
  fErrors.Add(error);
  StateChanged();
}

void TSonivoApp::SongErrorOccurred(const std::string& error) {
  log_error("player", error);
  fErrors.Add(error, TErrors::TLife::kOfSong);
  StateChanged();
}

void TSonivoApp::ErrorResolved(const std::string& error) {
  if (fErrors.Remove(error)) StateChanged();
}

void TSonivoApp::ErrorsResolved() {
  if (fErrors.Clear()) StateChanged();
}

void TSonivoApp::UserChose() {
  fList.CancelPlay();
  ErrorsResolved();
}

void TSonivoApp::SongBegins() {
  fSource.UseOwn();
}

void TSonivoApp::SongIsHeard() {
  fErrors.SongIsHeard();
}

void TSonivoApp::SongSought(int32 positionMs) {
  if (fSource.IsOther()) return;
  fBus.SignalSeeked(positionMs);
  PositionJumped(positionMs);
}

void TSonivoApp::PositionJumped(int32 positionMs) {
  if (fWindow) fWindow->ShowPosition(positionMs);
}

void TSonivoApp::StateChanged() {
  fSaver.NoteChanges(fSongs);
  const TPlayerState state = State();
  fOwn.SetClicks(fMarks.ClicksOf(fSongs.CurrentSong()));
  Publish(state);
  if (fWindow) fWindow->ShowState(state);
}

TPlayerState TSonivoApp::State() const {
  TPlayerState state;
  state.songs = fSongs.Songs();
  state.current = fSongs.Current();
  state.order = fList.Order();
  state.isSearching = fList.IsSearching();
  state.plugins = fPlugins.Texts();
  state.choices = fOwn.Choices();
  state.devices = fOwn.Devices();
  state.absentFolders = fFolders.Absent();
  state.errors = fErrors.Text();
  if (const char* const problem = fOwn.SoundProblem())
    state.errors.append(state.errors.empty() ? "" : "\n").append(player_text(problem));
  fSource.AddTo(&state);
  state.marksMs = fMarks.Of(shown_song(state));
  return state;
}

/** On the bus this player reports its own sound only: two players that were each other's source would loop. */
TOwnStatus TSonivoApp::OwnStatus() {
  const TPlayback playback = fOwn.Playback();
  TOwnStatus status;
  status.canPlay = fSongs.Count() > 0 && !fSource.IsOther();
  status.speedPercent = playback.speedPercent;
  status.volumePercent = playback.volumePercent;
  status.wantsTray = fOwn.Choices().closesToTray;
  status.shuffles = fOwn.Choices().modes.shuffles;
  status.repeat = fOwn.Choices().modes.repeat;
  const TSong* const song = fSongs.CurrentSong();
  if (song == nullptr || !playback.isLoaded || fSource.IsOther()) return status;
  status.state = playback.isPlaying ? TInfoRecord::kPlaying : TInfoRecord::kPaused;
  status.keepsAwake = playback.isPlaying && fOwn.Choices().keepsAwake;
  status.track = fOwn.LoadNumber();
  status.title = song->title;
  status.artist = song->artist;
  status.album = song->album;
  status.albumTrack = song->track;
  status.path = song->path;
  if (song->path == fCover.song) status.picture = fCover.file;
  status.durationMs = playback.durationMs;
  status.canGoNext = fOwn.CanSkip(1);
  status.canGoPrevious = true; // at least to its own beginning
  return status;
}

void TSonivoApp::Publish(const TPlayerState& state) {
  const TSong* const song = shown_song(state);
  const int32 playing = state.isPlaying ? TInfoRecord::kPlaying : TInfoRecord::kPaused;
  // Until its tags are read a song has only its file's name, and front ends must not take that for another song.
  fNowPlaying.Set(state.isLoaded ? playing : TInfoRecord::kStopped, state.durationMs,
                  song && song->played ? song->title : std::string());
  fNowPlaying.SetSpeed(state.speedPercent);
  fBus.Show(OwnStatus());
  // No wake-ups while the position does not change.
  if (state.isPlaying && fWindow)
    fPositionTimer.KeepRunning(kMsgTick, kPositionIntervalUs);
  else
    fPositionTimer.Stop();
}

void TSonivoApp::Choose(const BMessage& message) {
  TPlayerChoices choices = fOwn.Choices();
  take_choices(message, &choices);
  fChoiceSaver.Note(choices);
  fOwn.SetChoices(choices);
  fFolders.Watch(choices.watchedFolders);
}

void TSonivoApp::SaveChoices() {
  if (!fChoiceSaver.Save()) ErrorOccurred(player_text("Player_Err_Save_Settings"));
}

void TSonivoApp::SaveList() {
  const TPlayback playback = fOwn.Playback();
  if (!fSaver.Save(fSongs, playback.isLoaded ? fOwn.PositionMs() : 0, playback.volumePercent))
    return ErrorOccurred(player_text("Player_Err_Save_List", {fSaver.Path()}));
  if (!fFolders.Save()) ErrorOccurred(player_text("Player_Err_Save_Settings"));
}

/** Sent by an editor, too, that held up the closing and has saved its lyrics meanwhile: then it starts over. */
bool TSonivoApp::QuitRequested() {
  if (fWindow == nullptr) return true; // never shown, and without plug-ins then
  PostMessage(kMsgWindowCloses);
  return false;
}

void TSonivoApp::CloseButtonPressed() {
  if (!fIsInTray || !fOwn.Choices().closesToTray || fCloser.IsClosing()) return CloseRequested();
  fWindow->HideInTray();
  fIsHidden = true;
}

/** Without the tray nobody could get a hidden window back. */
void TSonivoApp::TakeTray(const BMessage& message) {
  fIsInTray = message.GetBool("shown", fIsInTray);
  if (!fIsInTray && fIsHidden) BringToFront();
}

void TSonivoApp::BringToFront() {
  fIsHidden = false;
  if (fWindow) fWindow->BringToFront();
}

void TSonivoApp::CloseRequested() {
  display::post(raise_open_questions); // a window that asks closes only after the answer
  if (fCloser.IsClosing()) return;
  std::vector<BMessenger> others = WindowAddresses();
  std::erase(others, BMessenger(fWindow));
  fCloser.Ask(others);
  EndIfAgreed();
}

/** The plug-ins go first, while this looper is alive and takes messages: they have filters in it. */
void TSonivoApp::EndIfAgreed() {
  if (!fCloser.TakeConsent()) return;
  SaveList();
  SaveChoices();
  fKeptWindow.SaveChanges();
  fStartTimer.Stop();
  fPlugins.BeginEnd();
  fPlugins.Proceed();
  if (fPlugins.HasEnded()) EndAfterPlugins();
}

void TSonivoApp::EndAfterPlugins() {
  if (fWindow->Lock()) fWindow->Quit();
  fWindow = nullptr;
  if (fHost->Lock()) fHost->Quit();
  fHost = nullptr;
  fBus.End();
  fOwn.End();
  if (!fPlugins.AreAllGone()) {
    // Its threads and windows are still there, and nothing that they use may go before them.
    log_error("player", "exiting without waiting for a plug-in that is not responding");
    std::_Exit(EXIT_FAILURE);
  }
  display::quit();
  Quit();
}
