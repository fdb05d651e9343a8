#include "player/window/sound_dialog.h"

#include "player/widgets/shown_text.h"
#include "player/window/choose.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kFullBalance = 100;
constexpr int kBalanceStep = 10;
constexpr int kBandHeight = 110;

QString band_name(int32 hz) {
  return hz < 1000 ? QString::number(hz) : QStringLiteral("%1 k").arg(hz / 1000);
}

template <typename Widget, typename Value>
void show_quietly(Widget* widget, Value value, void (Widget::*set)(Value)) {
  const QSignalBlocker blocker(widget);
  (widget->*set)(value);
}

} // namespace

TSoundDialog::TSoundDialog(QWidget* parent, const BMessenger& player) : QDialog(parent), fPlayer(player) {
  setWindowTitle(shown_text("Player_Sound_Title"));
  auto* const column = new QVBoxLayout(this);
  MakeFields();
  MakeEqualizer();
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QPushButton* const reset = buttons->addButton(shown_text("Player_Sound_Reset"), QDialogButtonBox::ResetRole);
  connect(reset, &QPushButton::clicked, this, [this] { Reset(); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  column->addWidget(buttons);
}

void TSoundDialog::MakeFields() {
  fDevice = new QComboBox;
  fDevice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(fDevice, &QComboBox::activated, this, [this](int index) {
    BMessage message(kMsgChoose);
    message.AddString(choice::kDevice, fDevice->itemData(index).toString().toStdString());
    fPlayer.SendMessage(&message, BMessenger(), 0);
  });
  fReplayGain = new QComboBox;
  for (const char* const text : {"Player_Gain_Off", "Player_Gain_Track", "Player_Gain_Album"})
    fReplayGain->addItem(shown_text(text));
  connect(fReplayGain, &QComboBox::activated, this,
          [this](int index) { choose(fPlayer, choice::kReplayGain, int32{index}); });
  fBalance = new QSlider(Qt::Horizontal);
  fBalance->setRange(-kFullBalance, kFullBalance);
  fBalance->setPageStep(kBalanceStep);
  fBalance->setTickInterval(kFullBalance);
  fBalance->setTickPosition(QSlider::TicksBelow);
  connect(fBalance, &QSlider::valueChanged, this,
          [this](int percent) { choose(fPlayer, choice::kBalance, int32{percent}); });
  auto* const form = new QFormLayout;
  form->addRow(shown_text("Player_Device"), fDevice);
  form->addRow(shown_text("Player_Gain"), fReplayGain);
  form->addRow(shown_text("Player_Balance"), fBalance);
  static_cast<QVBoxLayout*>(layout())->addLayout(form);
}

void TSoundDialog::MakeEqualizer() {
  fEqualizer = new QGroupBox(shown_text("Player_Equalizer"));
  fEqualizer->setCheckable(true);
  connect(fEqualizer, &QGroupBox::clicked, this, [this](bool isOn) { choose(fPlayer, choice::kEqualizer, isOn); });
  auto* const grid = new QGridLayout(fEqualizer);
  for (size_t i = 0; i < fBands.size(); ++i) {
    const auto column = static_cast<int>(i);
    const QString name = band_name(kBandsHz[i]);
    fBands[i] = new QSlider(Qt::Vertical);
    fBands[i]->setRange(-kMostBandDb, kMostBandDb);
    fBands[i]->setPageStep(3);
    fBands[i]->setTickInterval(kMostBandDb);
    fBands[i]->setTickPosition(QSlider::TicksRight);
    fBands[i]->setMinimumHeight(kBandHeight);
    fBands[i]->setAccessibleName(name + "Hz");
    connect(fBands[i], &QSlider::valueChanged, this, [this](int) { SendBands(); });
    grid->addWidget(fBands[i], 0, column, Qt::AlignHCenter);
    grid->addWidget(new QLabel(name), 1, column, Qt::AlignHCenter);
  }
  static_cast<QVBoxLayout*>(layout())->addWidget(fEqualizer);
}

void TSoundDialog::SendBands() {
  BMessage message(kMsgChoose);
  for (QSlider* const band : fBands) {
    message.AddInt32(choice::kBand, band->value());
    band->setToolTip(QStringLiteral("%1 dB").arg(band->value()));
  }
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

/** The sound as it is in the file; the device stays. */
void TSoundDialog::Reset() {
  BMessage message(kMsgChoose);
  message.AddInt32(choice::kReplayGain, 0);
  message.AddInt32(choice::kBalance, 0);
  message.AddBool(choice::kEqualizer, false);
  for (size_t i = 0; i < fBands.size(); ++i) message.AddInt32(choice::kBand, 0);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

/** A slider that is being dragged is left alone: the player's answer is older than its value. */
void TSoundDialog::ShowState(const TPlayerState& state) {
  const TSoundChoices& sound = state.choices.sound;
  ShowDevices(state);
  show_quietly(fReplayGain, static_cast<int>(sound.replayGain), &QComboBox::setCurrentIndex);
  const bool isDragged = fBalance->isSliderDown() || std::ranges::any_of(fBands, &QSlider::isSliderDown);
  if (isDragged) return;
  show_quietly<QAbstractSlider>(fBalance, sound.balancePercent, &QAbstractSlider::setValue);
  show_quietly(fEqualizer, sound.isEqualized, &QGroupBox::setChecked);
  for (size_t i = 0; i < fBands.size(); ++i) {
    show_quietly<QAbstractSlider>(fBands[i], sound.bandsDb[i], &QAbstractSlider::setValue);
    fBands[i]->setToolTip(QStringLiteral("%1 dB").arg(sound.bandsDb[i]));
  }
}

/** A chosen device that is not connected is listed, too. */
void TSoundDialog::ShowDevices(const TPlayerState& state) {
  const QString chosen = QString::fromStdString(state.choices.sound.device);
  if (fDevice->view()->isVisible()) return;
  const QSignalBlocker blocker(fDevice);
  fDevice->clear();
  fDevice->addItem(shown_text("Player_Device_Auto"), QString());
  for (const TSoundDevice& device : state.devices)
    fDevice->addItem(QString::fromStdString(device.description), QString::fromStdString(device.name));
  if (fDevice->findData(chosen) < 0) fDevice->addItem(chosen, chosen);
  fDevice->setCurrentIndex(fDevice->findData(chosen));
}
