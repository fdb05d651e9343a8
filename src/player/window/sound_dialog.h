#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"

#include <QDialog>

#include <array>

class QComboBox;
class QGroupBox;
class QSlider;

/** ReplayGain, balance, equalizer and output device. Every change takes effect at once. Display thread. */
class TSoundDialog : public QDialog {
public:
  TSoundDialog(QWidget* parent, const BMessenger& player);

  void ShowState(const TPlayerState& state);

private:
  void MakeFields();
  void MakeEqualizer();
  void SendBands();
  void Reset();
  void ShowDevices(const TPlayerState& state);

  const BMessenger fPlayer;
  QComboBox* fDevice = nullptr;
  QComboBox* fReplayGain = nullptr;
  QSlider* fBalance = nullptr;
  QGroupBox* fEqualizer = nullptr;
  std::array<QSlider*, kBandsHz.size()> fBands{};
};
