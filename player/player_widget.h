#pragma once

#include "platform/app/messenger.h"
#include "player/player_state.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QListWidget;
class QSlider;
class QToolButton;

/** The inside of the player's window. Lives on the display thread; what the user does becomes messages to `player`. */
class TPlayerWidget : public QWidget {
public:
  explicit TPlayerWidget(const BMessenger& player);

  void ShowState(const TPlayerState& state);
  void ShowPosition(int32 positionMs);

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  void MakeHead();
  void MakeSeekRow();
  void MakeControls();
  void MakeList();
  void MakeShortcuts();
  QToolButton* MakeButton(const QString& iconName, const QString& tip, uint32 command);
  void ShowSongs(const TPlayerState& state);
  void Send(uint32 command) const;
  void SendInt(uint32 command, const char* name, int32 value) const;
  void SendSeek(int positionMs) const;

  const BMessenger fPlayer;
  QLabel* fTitle = nullptr;
  QLabel* fArtist = nullptr;
  QLabel* fFault = nullptr;
  QLabel* fElapsed = nullptr;
  QLabel* fTotal = nullptr;
  QSlider* fSeekBar = nullptr;
  QToolButton* fPlayButton = nullptr;
  QSlider* fVolume = nullptr;
  QComboBox* fSpeed = nullptr;
  QListWidget* fList = nullptr;
};
