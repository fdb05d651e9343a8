#pragma once

#include "platform/app/application.h"
#include "player/command_line.h"
#include "player/faults.h"
#include "player/now_playing.h"
#include "player/player_state.h"
#include "player/plugin_loader.h"
#include "player/song_source.h"

#include <functional>
#include <memory>

class BMessageRunner;
class TFrontEndHost;
class TPlayerWindow;

/** The player: playlist, sound, windows and plug-ins, all on the application's looper. Knows what plays and why, shows
   it in the window, and answers front ends and scripts. */
class TSonivoApp : public BApplication, private TSongEvents {
public:
  using TSourceMaker = std::function<std::unique_ptr<TSongSource>(TSongEvents*)>;
  explicit TSonivoApp(TCommandLine commandLine, const TSourceMaker& makeSource = make_mpv_source);
  ~TSonivoApp() override;

  bool QuitRequested() override;
  void MessageReceived(BMessage* message) override;

private:
  // sonivo_app.cpp: what the user does and what the sound tells.
  void Start();
  void PlayFirstSong();
  void ShowLyrics() const;
  void PlayPause();
  void PlaySong(int32 index, bool paused);
  void PlayNeighbour(int32 direction);
  void Seek(int64 positionMs);
  void SetSpeed(int64 percent);
  void SetVolume(int32 percent);
  void AddSongs(const BMessage& message);
  void Loaded(const BMessage& message);
  void Ended(const BMessage& message);
  void Failed(const BMessage& message);
  void TellFault(const std::string& fault);
  void ForgetFaults();
  void Tick();
  void LookForFile();
  void StateChanged();
  bool IsAboutThisLoad(const BMessage& message) const;

  // sonivo_scripting.cpp: the answers to front ends and scripts.
  void Handshake(const BMessage& message) const;
  bool HandleWish(const BMessage& message);
  bool HandleScript(BMessage* message);
  void CountEntries(const BMessage& message) const;
  void GetEntry(const BMessage& message, int32 index) const;

  // sonivo_closing.cpp: the end.
  void CloseRequested();
  void WindowAnswered(const BMessage& message);
  void End();

  // The source's thread.
  void SongLoaded(int64 load, const TSongTags& tags) override;
  void SongEnded(int64 load) override;
  void SongFailed(int64 load, const std::string& reason) override;

  const TCommandLine fCommandLine;
  TPlaylist fPlaylist;
  TPlayerState fState;
  TFaults fFaults;
  bool fIsLoaded = false;
  int64 fLoad = 0;
  int64 fLoadedLoad = 0; // the last one that the sound could begin
  int64 fMissedLoad = 0; // the last one whose file was found gone
  int64 fTicks = 0;
  std::unique_ptr<TSongSource> fSource;
  TNowPlaying fNowPlaying;
  TFrontEndHost* fHost;
  TPlayerWindow* fWindow = nullptr; // until the start, and after the end
  TPluginLoader fPlugins;
  std::unique_ptr<BMessageRunner> fTicker;
  std::unique_ptr<BMessageRunner> fStarter;
  /** Windows that were asked to close and have not answered; -1 while the player is not closing. */
  int32 fAwaitedAnswers = -1;
};
