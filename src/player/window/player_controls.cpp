#include "player/window/player_controls.h"

#include "player/list/requests.h"
#include "player/model/player_messages.h"
#include "player/widgets/shown_text.h"
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

} // namespace

TPlayerControls::TPlayerControls(const BMessenger& player) : fPlayer(player) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  AddButton("previous", "Player_Previous", Qt::Key_P, kMsgPrevious);
  fPlayButton = AddButton("play", "Player_Play_Pause", Qt::Key_Space, kMsgPlayPause);
  AddButton("next", "Player_Next", Qt::Key_N, kMsgNext);
  row->addSpacing(8);
  fFromButton = AddRepeatButton("A", "Player_Repeat_From", kMsgRepeatFrom);
  fToButton = AddRepeatButton("B", "Player_Repeat_To", kMsgRepeatTo);
  row->addStretch(1);
  AddSpeed();
  AddVolume();
  row->addSpacing(4);
  fMenuButton = AddButton("menu", "Player_Menu", Qt::ALT | Qt::Key_M, 0);
  ShowTexts();
}

QToolButton* TPlayerControls::AddButton(const QString& icon, const char* name, const QKeySequence& key,
                                        uint32 request) {
  auto* const button = new QToolButton;
  button->setIcon(player_icon(icon));
  button->setIconSize(QSize(20, 20));
  button->setMinimumSize(36, 34);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  fButtons.push_back({button, name, key, false});
  if (request != 0) connect(button, &QToolButton::clicked, this, [this, request] { ask(fPlayer, request); });
  layout()->addWidget(button);
  return button;
}

/** Checked while its end is set; clicking it again cancels the repeat. The letter is its shortcut, too. */
QToolButton* TPlayerControls::AddRepeatButton(const QString& letter, const char* name, uint32 request) {
  auto* const button = new QToolButton;
  button->setText(letter);
  button->setMinimumSize(30, 34);
  button->setAutoRaise(true);
  button->setCheckable(true);
  button->setFocusPolicy(Qt::TabFocus);
  fButtons.push_back({button, name, QKeySequence(letter), true});
  connect(button, &QToolButton::clicked, this,
          [this, request](bool wanted) { ask(fPlayer, wanted ? request : kMsgRepeatOff); });
  layout()->addWidget(button);
  return button;
}

void TPlayerControls::AddSpeed() {
  fSpeed = new QComboBox;
  show_speed(fSpeed, 100);
  fSpeed->setFocusPolicy(Qt::TabFocus);
  connect(fSpeed, &QComboBox::activated, this,
          [this] { ask(fPlayer, kMsgSpeed, "percent", fSpeed->currentData().toInt()); });
  layout()->addWidget(fSpeed);
}

void TPlayerControls::AddVolume() {
  QToolButton* const mute = AddButton("volume", "Player_Mute", Qt::Key_M, 0);
  mute->setIconSize(QSize(16, 16));
  mute->setMinimumSize(28, 34);
  connect(mute, &QToolButton::clicked, this, [this] { Mute(); });
  fVolume = new TClickSlider;
  fVolume->setRange(0, 100);
  fVolume->setFixedWidth(kVolumeWidth);
  fVolume->setFocusPolicy(Qt::TabFocus);
  connect(fVolume, &QSlider::valueChanged, this, [this](int value) { ask(fPlayer, kMsgVolume, "percent", value); });
  layout()->addWidget(fVolume);
}

void TPlayerControls::ShowTexts() {
  for (const TNamedButton& named : fButtons) {
    const QString name = plain_text(named.name);
    const QString letter = shown_key(named.key);
    named.button->setAccessibleName(name);
    named.button->setToolTip(
        QStringLiteral("%1 (%2)").arg(name, named.isRepeat ? shown_text("Player_Repeat_Keys").arg(letter) : letter));
  }
  fSpeed->setToolTip(shown_text("Player_Speed_Tip"));
  fSpeed->setAccessibleName(shown_text("Player_Speed"));
  fVolume->setToolTip(shown_text("Player_Volume_Tip"));
  fVolume->setAccessibleName(shown_text("Player_Volume"));
}

void TPlayerControls::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LanguageChange) ShowTexts();
  QWidget::changeEvent(event);
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
