#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"
#include "player/window/source_menu.h"

#include <QPointer>
#include <QWidget>

#include <optional>
#include <vector>

class QLabel;
class QMenu;
class TCoverView;
class TFilterBar;
class TPlayerControls;
class TSeekBar;
class TSongListView;
class TSongPictures;
class TSoundDialog;
class TTagReader;

/** The content of the player's window. Sends the user's requests to `player`. Display thread. */
class TPlayerWidget : public QWidget {
public:
  explicit TPlayerWidget(const BMessenger& player);

  void ShowState(const TPlayerState& state);
  void ShowPosition(int32 positionMs);

protected:
  void showEvent(QShowEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void MakeHead();
  void MakeSeekBar();
  void MakeShortcuts();
  void OpenMenu();
  void MakeMenu();
  void AddPluginMenus();
  void OpenSound();
  void ShowTotal();
  void ShowErrors(const std::string& errors);
  void ShowPictures(const TPlayerState& state);
  void ReadTags();
  void SeekBy(int ms);
  void Skip(uint32 request);
  /** A letter that is a command, pressed `agoMs` ago. */
  void RunLetter(Qt::Key key, int agoMs);
  void OpenFilter();
  void OpenCoverMenu(const QPoint& where);
  void ShowAbout();
  void ReportPlace();
  void LimitSize();

  const BMessenger fPlayer;
  TCoverView* fCover = nullptr;
  QLabel* fTitle = nullptr;
  QLabel* fArtist = nullptr;
  QLabel* fErrorLabel = nullptr;
  QLabel* fElapsed = nullptr;
  QLabel* fTotal = nullptr;
  TSeekBar* fSeekBar = nullptr;
  TPlayerControls* fControls = nullptr;
  TSongListView* fList = nullptr;
  TFilterBar* fFilterBar = nullptr; // lazy
  std::vector<TPluginTexts> fPlugins;
  std::vector<QMenu*> fPluginMenus;   // in fMenu, rebuilt when it opens
  QMenu* fMenu = nullptr;             // lazy; of the current language
  QAction* fPluginPlace = nullptr;    // in fMenu; the plug-ins' menus are before it
  TSongPictures* fPictures = nullptr; // lazy, with the first song
  std::shared_ptr<const TSongs> fSongs;
  std::optional<TSong> fShown;      // the song shown as playing
  TTagReader* fTagReader = nullptr; // lazy, some time after the window is shown
  TSources fSources;
  QLabel* fListTotal = nullptr;
  QPointer<TSoundDialog> fSoundDialog; // while it is open
  TPlayerState fState;
};
