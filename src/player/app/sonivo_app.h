#pragma once

#include "platform/app/application.h"
#include "player/app/choice_saver.h"
#include "player/app/command_line.h"
#include "player/app/errors.h"
#include "player/app/folder_watcher.h"
#include "player/app/kept_window.h"
#include "player/app/list_editor.h"
#include "player/app/list_saver.h"
#include "player/app/own_transport.h"
#include "player/app/player_events.h"
#include "player/app/plugin_host.h"
#include "player/app/song_marks.h"
#include "player/app/sound_messages.h"
#include "player/app/source_switch.h"
#include "player/app/window_closer.h"
#include "player/bus/bus.h"
#include "player/sound/now_playing.h"

#include <functional>

class TFrontEndHost;
class TPlayerWindow;

/** The player: wires its parts, which all live on the application's looper. Hands each message to the part that it
    concerns, and what the parts report to the window, the front ends and the desktop. */
class TSonivoApp : public BApplication, private TPlayerEvents {
public:
  static constexpr const char* kSignature = "application/x-vnd.Marvik-Sonivo";
  using TSourceMaker = std::function<std::shared_ptr<TSongSource>(TSongEvents*)>;
  explicit TSonivoApp(TCommandLine commandLine, const TSourceMaker& makeSource = make_mpv_source);
  ~TSonivoApp() override;

  bool QuitRequested() override;
  void MessageReceived(BMessage* message) override;

private:
  /** The song's cover that was found last. */
  struct TCover {
    std::string song;
    std::string file;
  };

  /** Settings and texts that the window needs. */
  void Prepare();
  void Start();
  void PlayFirstSong();
  void LoadOthers();

  void StateChanged() override;
  void ErrorOccurred(const std::string& error) override;
  void SongErrorOccurred(const std::string& error) override;
  void ErrorResolved(const std::string& error) override;
  void ErrorsResolved() override;
  void UserChose() override;
  void SongBegins() override;
  void SongIsHeard() override;
  void SongSought(int32 positionMs) override;
  void PositionJumped(int32 positionMs) override;

  TPlayerState State() const;
  TOwnStatus OwnStatus();
  void Publish(const TPlayerState& state);

  bool HandleProgress(const BMessage& message);
  bool HandleChoice(const BMessage& message);
  bool HandleDesktop(const BMessage& message);
  void TakeOver(const BMessage& message);
  /** Songs go to the list, lyrics to the editor; other files are refused with a word. */
  void TakeDrop(const BMessage& message);
  void Choose(const BMessage& message);
  void TakeLanguage(const BMessage& message);
  void SaveList();
  void SaveChoices();
  void CloseButtonPressed();
  void BringToFront();
  void TakeTray(const BMessage& message);
  void CloseRequested();
  void EndIfAgreed();
  void EndAfterPlugins();

  const TCommandLine fCommandLine;
  TPlaylist fSongs;
  TSoundMessages fSoundMessages;
  TOwnTransport fOwn;
  TBus fBus;
  TNowPlaying fNowPlaying;
  TSourceSwitch fSource;
  TListEditor fList;
  TFolderWatcher fFolders;
  TListSaver fSaver;
  TChoiceSaver fChoiceSaver;
  TKeptWindow fKeptWindow;
  TPluginHost fPlugins;
  TWindowCloser fCloser;
  TErrors fErrors;
  TSongMarks fMarks;
  TCover fCover;
  bool fIsInTray = false; // the desktop's tray shows the player
  bool fIsHidden = false; // in the tray
  TFrontEndHost* fHost;
  TPlayerWindow* fWindow = nullptr; // between the start and the end
  TMessageTimer fStartTimer;        // delays what the first windows need not wait for
  TMessageTimer fPositionTimer;     // runs while a song plays
};
