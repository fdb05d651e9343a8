#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"

#include <QKeySequence>
#include <QWidget>

#include <vector>

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

protected:
  void changeEvent(QEvent* event) override;

private:
  struct TNamedButton {
    QToolButton* button;
    const char* name; // key of its text
    QKeySequence key;
    bool isRepeat;
  };
  QToolButton* AddButton(const QString& icon, const char* name, const QKeySequence& key, uint32 request);
  QToolButton* AddRepeatButton(const QString& letter, const char* name, uint32 request);
  void ShowTexts();
  void AddSpeed();
  void AddVolume();

  const BMessenger fPlayer;
  std::vector<TNamedButton> fButtons;
  QToolButton* fPlayButton = nullptr;
  QToolButton* fFromButton = nullptr;
  QToolButton* fToButton = nullptr;
  QToolButton* fMenuButton = nullptr;
  QComboBox* fSpeed = nullptr;
  QSlider* fVolume = nullptr;
  bool fShowsPlaying = false;
  int fVolumeBeforeMute = 100;
};
