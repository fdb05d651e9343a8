#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"

#include <QWidget>

class QComboBox;
class QSlider;
class QToolButton;

/** The row of controls: playback, A-B repeat, speed, volume, menu. Display thread. */
class TPlayerControls : public QWidget {
public:
  explicit TPlayerControls(const BMessenger& player);

  void ShowState(const TPlayerState& state);
  /** Opens the menu, which its user creates lazily. */
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
  int fVolumeBeforeMute = 100;
};
