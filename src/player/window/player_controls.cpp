#include "player/window/player_controls.h"

#include "player/list/requests.h"
#include "player/model/player_messages.h"
#include "player/window/player_icons.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QSlider>
#include <QToolButton>

#include <set>
#include <utility>

namespace {

constexpr int kSpeedsPercent[] = {25, 50, 75, 90, 100, 110, 125, 150, 200};
constexpr int kVolumeWidth = 80;

QString speed_text(int percent) {
  return QStringLiteral("%1×").arg(percent / 100.0);
}

/** Adds a custom speed to the standard ones while it is set. */
void show_speed(QComboBox* box, int percent) {
  if (box->currentData().toInt() == percent) return;
  std::set<int> speeds(std::begin(kSpeedsPercent), std::end(kSpeedsPercent));
  speeds.insert(percent);
  box->clear();
  for (const int speed : speeds) box->addItem(speed_text(speed), speed);
  box->setCurrentIndex(box->findData(percent));
}

/** A slider that jumps to the clicked position. */
class TClickSlider : public QSlider {
public:
  TClickSlider() : QSlider(Qt::Horizontal) {}

protected:
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && width() > 0) {
      setSliderPosition(minimum() + static_cast<int>((maximum() - minimum()) * event->position().x() / width()));
    }
    QSlider::mousePressEvent(event);
  }
};

QString tip_of(const QString& name, const QString& key) {
  return key.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, key);
}

} // namespace

TPlayerControls::TPlayerControls(const BMessenger& player) : fPlayer(player) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  AddButton("previous", tr("Previous song"), tr("P"), kMsgPrevious);
  fPlayButton = AddButton("play", tr("Play / pause"), tr("Space"), kMsgPlayPause);
  AddButton("next", tr("Next song"), tr("N"), kMsgNext);
  row->addSpacing(8);
  fFromButton = AddRepeatButton("A", tr("Repeat: start here"), kMsgRepeatFrom);
  fToButton = AddRepeatButton("B", tr("Repeat: end here"), kMsgRepeatTo);
  row->addStretch(1);
  AddSpeed();
  AddVolume();
  row->addSpacing(4);
  fMenuButton = AddButton("menu", tr("Menu"), tr("Alt+M"), 0);
}

QToolButton* TPlayerControls::AddButton(const QString& icon, const QString& name, const QString& key, uint32 request) {
  auto* const button = new QToolButton;
  button->setIcon(player_icon(icon));
  button->setIconSize(QSize(20, 20));
  button->setMinimumSize(36, 34);
  button->setAutoRaise(true);
  button->setToolTip(tip_of(name, key));
  button->setAccessibleName(name);
  button->setFocusPolicy(Qt::TabFocus);
  if (request != 0) connect(button, &QToolButton::clicked, this, [this, request] { ask(fPlayer, request); });
  layout()->addWidget(button);
  return button;
}

/** Checked while its end is set; clicking it again cancels the repeat. The letter is its shortcut, too. */
QToolButton* TPlayerControls::AddRepeatButton(const QString& letter, const QString& name, uint32 request) {
  auto* const button = new QToolButton;
  button->setText(letter);
  button->setMinimumSize(30, 34);
  button->setAutoRaise(true);
  button->setCheckable(true);
  button->setToolTip(tip_of(name, tr("%1; X: stop repeating").arg(letter)));
  button->setAccessibleName(name);
  button->setFocusPolicy(Qt::TabFocus);
  connect(button, &QToolButton::clicked, this,
          [this, request](bool wanted) { ask(fPlayer, wanted ? request : kMsgRepeatOff); });
  layout()->addWidget(button);
  return button;
}

void TPlayerControls::AddSpeed() {
  fSpeed = new QComboBox;
  show_speed(fSpeed, 100);
  fSpeed->setToolTip(tr("Speed, same pitch (Ctrl+Up, Ctrl+Down: 5%; Ctrl+0: normal)"));
  fSpeed->setAccessibleName(tr("Speed"));
  fSpeed->setFocusPolicy(Qt::TabFocus);
  connect(fSpeed, &QComboBox::activated, this,
          [this] { ask(fPlayer, kMsgSpeed, "percent", fSpeed->currentData().toInt()); });
  layout()->addWidget(fSpeed);
}

void TPlayerControls::AddVolume() {
  QToolButton* const mute = AddButton("volume", tr("Mute / unmute"), tr("M"), 0);
  mute->setIconSize(QSize(16, 16));
  mute->setMinimumSize(28, 34);
  connect(mute, &QToolButton::clicked, this, [this] { Mute(); });
  fVolume = new TClickSlider;
  fVolume->setRange(0, 100);
  fVolume->setFixedWidth(kVolumeWidth);
  fVolume->setToolTip(tr("Volume (+, −)"));
  fVolume->setAccessibleName(tr("Volume"));
  fVolume->setFocusPolicy(Qt::TabFocus);
  connect(fVolume, &QSlider::valueChanged, this, [this](int value) { ask(fPlayer, kMsgVolume, "percent", value); });
  layout()->addWidget(fVolume);
}

void TPlayerControls::ChangeVolume(int percent) {
  fVolume->setValue(fVolume->value() + percent);
}

void TPlayerControls::Mute() {
  const int before = std::exchange(fVolumeBeforeMute, fVolume->value());
  fVolume->setValue(fVolume->value() > 0 ? 0 : before);
}

void TPlayerControls::ShowState(const TPlayerState& state) {
  if (state.isPlaying != fShowsPlaying) fPlayButton->setIcon(player_icon(state.isPlaying ? "pause" : "play"));
  fShowsPlaying = state.isPlaying;
  fFromButton->setChecked(state.repeatFromMs >= 0);
  fToButton->setChecked(state.repeatToMs >= 0);
  fFromButton->setEnabled(state.isLoaded);
  fToButton->setEnabled(state.isLoaded);
  show_speed(fSpeed, state.speedPercent);
  if (fVolume->isSliderDown()) return;
  const QSignalBlocker quiet(fVolume);
  fVolume->setValue(state.volumePercent);
}
