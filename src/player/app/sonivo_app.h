#pragma once

#include "platform/app/application.h"
#include "player/app/command_line.h"
#include "player/app/faults.h"
#include "player/bus/bus.h"
#include "player/list/song_search.h"
#include "player/model/player_state.h"
#include "player/plugins/plugin_loader.h"
#include "player/sound/now_playing.h"
#include "player/sound/song_source.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>

class BMessageRunner;
class TFrontEndHost;
class TPlayerWindow;

/** Another player that is the source. */
struct TFollowedPlayer {
  std::string id;
  std::string name;
  TSong song;
  int32 state = TInfoRecord::kStopped;
  int32 speedPercent = 100;
  int32 volumePercent = 100;
  bool isSilent = false;
};

/** What is done with songs once they are found. */
struct TAwaitedSongs {
  /** Those that are in the list already stay where they stand, the others come to its end. */
  bool areHandedOver = false;
  bool startPaused = false;
  int64 beforeId = 0; // of songs that were put into the list: the song they come before; 0 for its end
  std::unordered_set<std::string> added = {};
};

/** The player: playlist, sound, windows and plug-ins, all on the application's looper. Knows what plays and why, shows
   it in the window, and answers front ends and scripts. */
class TSonivoApp : public BApplication, private TSongEvents {
public:
  static constexpr const char* kSignature = "application/x-vnd.Marvik-Sonivo";
  using TSourceMaker = std::function<std::shared_ptr<TSongSource>(TSongEvents*)>;
  explicit TSonivoApp(TCommandLine commandLine, const TSourceMaker& makeSource = make_mpv_source);
  ~TSonivoApp() override;

  bool QuitRequested() override;
  void MessageReceived(BMessage* message) override;

private:
  // sonivo_app.cpp: the start, and what is shown.
  void Start();
  void PlayFirstSong();
  bool StartsPaused() const;
  void TellFault(const std::string& fault);
  void ForgetFaults();
  void UserChoseSong();
  void StateChanged();
  void TellSong(const TPlayerState& shown);
  void TickWhilePlaying(bool isPlaying);

  // sonivo_playing.cpp: what the user does to the song, and what the sound tells.
  void PlayPause();
  void PlaySong(int32 index, bool paused);
  void PlayNeighbour(int32 direction);
  void StopPlaying();
  void Seek(int64 positionMs);
  void SetSpeed(int64 percent);
  void SetVolume(int32 percent);
  void SetRepeat(uint32 bound);
  void ForgetRepeat();
  bool IsAboutThisLoad(const BMessage& message) const;
  void Loaded(const BMessage& message);
  void Ended(const BMessage& message);
  void PlayOn();
  void Failed(const BMessage& message);
  void TakeOutput(const BMessage& message);
  void Tick();
  void LookForFile();

  // sonivo_list.cpp: the list of songs, also from one run to the next.
  bool HandleList(const BMessage& message);
  void TakeFoundSongs();
  void TakePiece(TSongSearch::TPiece piece);
  void PlayFound(int32 index, bool paused);
  void AddSongs(const BMessage& message);
  void RemoveSongs(const BMessage& message);
  void SaveList(const BMessage& message);
  void TakeTags(const BMessage& message);
  void TakeOver(const BMessage& message);
  int32 FindKeptList();
  void Keep();
  void SaveKeptList();

  // sonivo_bus.cpp: the desktop's message bus, and another player there as the source.
  bool HandleBus(const BMessage& message);
  void SeekOver(int32 byMs);
  void RaiseWindow() const;
  TSongControl& Sound();
  void ChooseSource(const std::string& id);
  void UseOwnSound();
  void TakePlayers(const BMessage& message);
  void TakeOther(const BMessage& message);
  TPlayerState StateOfOther() const;
  TOwnStatus OwnStatus() const;
  void TakeCover(const BMessage& message);

  // sonivo_scripting.cpp: the answers to front ends and scripts.
  void Handshake(const BMessage& message) const;
  bool HandleWish(const BMessage& message);
  void TakeMarks(const BMessage& message);
  bool HandleScript(BMessage* message);
  void ExecuteEntry(int32 index);
  void CountEntries(const BMessage& message) const;
  void GetEntry(const BMessage& message, int32 index) const;
  std::string ToldTitle(const TSong& song) const;

  // sonivo_plugins.cpp: what else is loaded, and what the user asks of it.
  void LoadPlugins(const TPluginLoader::TWanted& wanted);
  void LoadEditor();
  void LoadOtherPlugins();
  void LookAfterPlugins();
  std::vector<TPluginTexts> PluginTexts() const;
  void WatchPlugins();
  void ShowLyrics(const std::string& path);
  bool HandlePlugin(const BMessage& message);

  // sonivo_closing.cpp: the end.
  void CloseRequested();
  void LookAtAskedWindows();
  void WindowAnswered(const BMessage& message);
  void End();
  void EndAfterPlugins();

  // The source's thread.
  void SongLoaded(int64 load, const TSongTags& tags) override;
  void SongEnded(int64 load) override;
  void SongFailed(int64 load, const std::string& reason) override;
  void OutputChanged(bool isSilent) override;

  const TCommandLine fCommandLine;
  TPlaylist fPlaylist;
  /** Songs that are being looked for, by the search's number; and of which search the first song is played as soon as
      it is found, 0 for none. */
  TSongSearch fSearch;
  std::map<int64, TAwaitedSongs> fAwaited;
  int64 fPlayedSearch = 0;
  bigtime_t fTookSongsUs = 0;
  TPlayerState fState;
  TFaults fFaults;
  bool fIsLoaded = false;
  bool fIsSilent = false; // no sound device
  int64 fLoad = 0;
  int64 fLoadedLoad = 0; // the last one that the sound could begin
  int64 fMissedLoad = 0; // the last one whose file was found gone
  int64 fTicks = 0;
  int32 fResumeMs = 0; // where the song goes on once it is loaded
  /** The cover that was found last, and of which song. */
  std::string fCoverFile;
  std::string fCoverSong;
  /** The tagged moments that the editor told last, and of which song. */
  std::string fMarkedTitle;
  std::shared_ptr<const std::vector<int32>> fMarksMs;
  /** Where the list is kept; empty until it was read. What was kept last. */
  std::string fKeptPath;
  std::shared_ptr<const TSongs> fKeptSongs;
  int32 fKeptCurrent = -1;
  std::shared_ptr<TSongSource> fSource;
  TBus fBus;
  std::optional<TFollowedPlayer> fOther;
  std::string fWantedSource; // asked for and not there yet
  TNowPlaying fNowPlaying;
  TFrontEndHost* fHost;
  TPlayerWindow* fWindow = nullptr; // until the start, and after the end
  TPluginLoader fPlugins;
  std::vector<std::string> fAwaitedLyrics; // to be opened when the editor has been loaded
  std::unique_ptr<BMessageRunner> fPluginWatch;
  std::unique_ptr<BMessageRunner> fTicker;
  std::unique_ptr<BMessageRunner> fStarter;
  std::unique_ptr<BMessageRunner> fKeeper;
  std::unique_ptr<BMessageRunner> fFinder;
  std::unique_ptr<BMessageRunner> fCloser;
  std::vector<BMessenger> fAskedWindows;
  /** Windows that were asked to close and have not answered; -1 while the player is not closing. */
  int32 fAwaitedAnswers = -1;
  bool fIsEnding = false; // the plug-ins are
};
