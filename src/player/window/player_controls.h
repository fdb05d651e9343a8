#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"

#include <QWidget>

class QComboBox;
class QSlider;
class QToolButton;

/** The row of buttons under the song: what plays, the part that is repeated, speed, volume, and the menu. */
class TPlayerControls : public QWidget {
public:
  explicit TPlayerControls(const BMessenger& player);

  void ShowState(const TPlayerState& state);
  /** The menu's own button; what it holds is made when it is first opened. */
  QToolButton* MenuButton() const { return fMenuButton; }
  void ChangeVolume(int percent);
  void Mute();

private:
  QToolButton* AddButton(const QString& icon, const QString& name, const QString& key, uint32 request);
  QToolButton* AddRepeatButton(const QString& letter, const QString& name, uint32 request);
  void AddSpeed();
  void AddVolume();

  const BMessenger fPlayer;
  QToolButton* fPlayButton = nullptr;
  QToolButton* fFromButton = nullptr;
  QToolButton* fToButton = nullptr;
  QToolButton* fMenuButton = nullptr;
  QComboBox* fSpeed = nullptr;
  QSlider* fVolume = nullptr;
  bool fShowsPlaying = false;
  int fLoudBefore = 100; // to be silenced
};
