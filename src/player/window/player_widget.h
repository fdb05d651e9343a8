#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"
#include "player/window/source_menu.h"

#include <QWidget>

#include <vector>

class QLabel;
class QMenu;
class TCoverView;
class TPlayerControls;
class TSeekBar;
class TSongListView;
class TSongPictures;
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

private:
  void MakeHead();
  void MakeSeekBar();
  void MakeShortcuts();
  void OpenMenu();
  void MakeMenu();
  void AddPluginMenus();
  void ShowErrors(const std::string& errors);
  void ShowPictures(const TPlayerState& state);
  void ReadTags();
  void SeekBy(int ms);

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
  std::vector<TPluginTexts> fPlugins;
  std::vector<QMenu*> fPluginMenus;   // in fMenu, rebuilt when it opens
  QMenu* fMenu = nullptr;             // lazy
  TSongPictures* fPictures = nullptr; // lazy, with the first song
  std::shared_ptr<const TSongs> fSongs;
  TTagReader* fTagReader = nullptr; // lazy, some time after the window is shown
  TSources fSources;
};
