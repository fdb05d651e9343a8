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

/** The inside of the player's window. Lives on the display thread; what the user does becomes messages to `player`. */
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
  void ShowFaults(const std::string& faults);
  void ShowPictures(const TPlayerState& state);
  void ReadTags();
  void SeekBy(int ms);

  const BMessenger fPlayer;
  TCoverView* fCover = nullptr;
  QLabel* fTitle = nullptr;
  QLabel* fArtist = nullptr;
  QLabel* fFault = nullptr;
  QLabel* fElapsed = nullptr;
  QLabel* fTotal = nullptr;
  TSeekBar* fSeekBar = nullptr;
  TPlayerControls* fControls = nullptr;
  TSongListView* fList = nullptr;
  std::vector<TPluginTexts> fPlugins;
  std::vector<QMenu*> fPluginMenus;   // in the next, anew whenever it opens
  QMenu* fMenu = nullptr;             // made when it is first opened
  TSongPictures* fPictures = nullptr; // made with the first song
  std::shared_ptr<const TSongs> fSongs;
  TTagReader* fTagReader = nullptr; // made when the window stands
  TSources fSources;
};
