#include "player/player_widget.h"

#include "platform/app/message.h"
#include "player/player_icons.h"
#include "player/player_messages.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QShortcut>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include <set>

namespace {

constexpr int kSpeedsPercent[] = {25, 50, 75, 90, 100, 110, 125, 150, 200};
constexpr int kSeekStepMs = 5000;

QString clock_text(int32 positionMs) {
  const int32 seconds = positionMs / 1000;
  return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString speed_text(int percent) {
  return QStringLiteral("%1×").arg(percent / 100.0);
}

/** A speed between those of the list stands among them for as long as it lasts. */
void show_speed(QComboBox* box, int percent) {
  if (box->currentData().toInt() == percent) return;
  std::set<int> speeds(std::begin(kSpeedsPercent), std::end(kSpeedsPercent));
  speeds.insert(percent);
  box->clear();
  for (const int speed : speeds) box->addItem(speed_text(speed), speed);
  box->setCurrentIndex(box->findData(percent));
}

/** A slider that goes where it is clicked. */
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

TPlayerWidget::TPlayerWidget(const BMessenger& player) : fPlayer(player) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(14, 12, 14, 12);
  column->setSpacing(8);
  MakeHead();
  MakeSeekRow();
  MakeControls();
  MakeList();
  MakeShortcuts();
  setAcceptDrops(true);
  ShowState({});
}

void TPlayerWidget::MakeHead() {
  fTitle = new QLabel;
  QFont large = fTitle->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  large.setBold(true);
  fTitle->setFont(large);
  fTitle->setAccessibleName(tr("Title of the song"));
  fArtist = new QLabel;
  fArtist->setForegroundRole(QPalette::PlaceholderText);
  fFault = new QLabel;
  fFault->setWordWrap(true);
  QPalette warning = fFault->palette();
  warning.setColor(QPalette::WindowText, QColor(0xc0, 0x39, 0x2b));
  fFault->setPalette(warning);
  for (QLabel* label : {fTitle, fArtist}) {
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a long title never widens the window
    layout()->addWidget(label);
  }
  fFault->setTextFormat(Qt::PlainText);
  layout()->addWidget(fFault);
}

void TPlayerWidget::MakeSeekRow() {
  auto* const row = new QHBoxLayout;
  fElapsed = new QLabel(clock_text(0));
  fTotal = new QLabel(clock_text(0));
  fSeekBar = new TClickSlider;
  fSeekBar->setToolTip(tr("Play position (Left, Right: 5 s)"));
  fSeekBar->setAccessibleName(tr("Play position"));
  fSeekBar->setFocusPolicy(Qt::NoFocus);
  connect(fSeekBar, &QSlider::sliderReleased, this, [this] { SendSeek(fSeekBar->value()); });
  row->addWidget(fElapsed);
  row->addWidget(fSeekBar, 1);
  row->addWidget(fTotal);
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

QToolButton* TPlayerWidget::MakeButton(const QString& iconName, const QString& tip, uint32 command) {
  auto* const button = new QToolButton;
  button->setIcon(player_icon(iconName, palette().color(QPalette::ButtonText)));
  button->setIconSize(QSize(22, 22));
  button->setMinimumSize(40, 36);
  button->setAutoRaise(true);
  button->setToolTip(tip);
  button->setAccessibleName(tip);
  button->setFocusPolicy(Qt::TabFocus);
  connect(button, &QToolButton::clicked, this, [this, command] { Send(command); });
  return button;
}

void TPlayerWidget::MakeControls() {
  auto* const row = new QHBoxLayout;
  row->addWidget(MakeButton("previous", tr("Previous song (P)"), kMsgPrevious));
  fPlayButton = MakeButton("play", tr("Play or pause (Space)"), kMsgPlayPause);
  row->addWidget(fPlayButton);
  row->addWidget(MakeButton("next", tr("Next song (N)"), kMsgNext));
  row->addStretch(1);

  fSpeed = new QComboBox;
  show_speed(fSpeed, 100);
  fSpeed->setToolTip(tr("Speed; the pitch is kept"));
  fSpeed->setAccessibleName(tr("Speed"));
  fSpeed->setFocusPolicy(Qt::TabFocus);
  connect(fSpeed, &QComboBox::activated, this,
          [this] { SendInt(kMsgSpeed, "percent", fSpeed->currentData().toInt()); });
  row->addWidget(fSpeed);

  auto* const sign = new QLabel;
  sign->setPixmap(player_icon("volume", palette().color(QPalette::WindowText)).pixmap(16, 16));
  row->addWidget(sign);
  fVolume = new TClickSlider;
  fVolume->setRange(0, 100);
  fVolume->setFixedWidth(90);
  fVolume->setToolTip(tr("Volume"));
  fVolume->setAccessibleName(tr("Volume"));
  fVolume->setFocusPolicy(Qt::TabFocus);
  connect(fVolume, &QSlider::valueChanged, this, [this](int value) { SendInt(kMsgVolume, "percent", value); });
  row->addWidget(fVolume);
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void TPlayerWidget::MakeList() {
  fList = new QListWidget;
  fList->setAccessibleName(tr("Playlist"));
  fList->setUniformItemSizes(true);
  fList->setAlternatingRowColors(true);
  connect(fList, &QListWidget::itemActivated, this,
          [this](QListWidgetItem* item) { SendInt(kMsgPlaySong, "index", fList->row(item)); });
  static_cast<QVBoxLayout*>(layout())->addWidget(fList, 1);
}

void TPlayerWidget::MakeShortcuts() {
  const auto add = [this](const QKeySequence& key, auto action) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, action);
  };
  add(Qt::Key_Space, [this] { Send(kMsgPlayPause); });
  add(Qt::Key_N, [this] { Send(kMsgNext); });
  add(Qt::Key_P, [this] { Send(kMsgPrevious); });
  add(Qt::Key_Left, [this] { SendSeek(fSeekBar->value() - kSeekStepMs); });
  add(Qt::Key_Right, [this] { SendSeek(fSeekBar->value() + kSeekStepMs); });
}

void TPlayerWidget::ShowState(const TPlayerState& state) {
  const bool hasSong = state.current >= 0 && state.current < static_cast<int32>(state.songs.size());
  const TSong song = hasSong ? state.songs[static_cast<size_t>(state.current)] : TSong();
  fTitle->setText(hasSong ? QString::fromStdString(song.title) : tr("No song"));
  fTitle->setToolTip(QString::fromStdString(song.path));
  fArtist->setText(hasSong ? QString::fromStdString(song.artist) : tr("Drop songs or folders here"));
  fFault->setText(QString::fromStdString(state.faults));
  fFault->setVisible(!state.faults.empty());
  fPlayButton->setIcon(player_icon(state.isPlaying ? "pause" : "play", palette().color(QPalette::ButtonText)));
  fTotal->setText(clock_text(state.durationMs));
  fSeekBar->setRange(0, state.durationMs);
  fSeekBar->setEnabled(hasSong);
  show_speed(fSpeed, state.speedPercent);
  if (!fVolume->isSliderDown()) {
    const QSignalBlocker quiet(fVolume);
    fVolume->setValue(state.volumePercent);
  }
  ShowSongs(state);
}

void TPlayerWidget::ShowSongs(const TPlayerState& state) {
  while (fList->count() > static_cast<int>(state.songs.size())) delete fList->takeItem(fList->count() - 1);
  while (fList->count() < static_cast<int>(state.songs.size())) fList->addItem(QString());
  for (int i = 0; i < fList->count(); ++i) {
    const TSong& song = state.songs[static_cast<size_t>(i)];
    QListWidgetItem* const item = fList->item(i);
    const QString artist = QString::fromStdString(song.artist);
    const QString title = QString::fromStdString(song.title);
    item->setText(artist.isEmpty() ? title : title + QStringLiteral(" — ") + artist);
    QFont font = fList->font();
    font.setBold(i == state.current);
    font.setStrikeOut(song.failed);
    item->setFont(font);
  }
}

void TPlayerWidget::ShowPosition(int32 positionMs) {
  if (!fSeekBar->isSliderDown()) fSeekBar->setValue(positionMs);
  fElapsed->setText(clock_text(positionMs));
}

void TPlayerWidget::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void TPlayerWidget::dropEvent(QDropEvent* event) {
  BMessage message(kMsgAddSongs);
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile()) message.AddString("path", url.toLocalFile().toStdString());
  }
  fPlayer.SendMessage(&message, BMessenger(), 0);
  event->acceptProposedAction();
}

void TPlayerWidget::Send(uint32 command) const {
  const BMessage message(command);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

void TPlayerWidget::SendInt(uint32 command, const char* name, int32 value) const {
  BMessage message(command);
  message.AddInt32(name, value);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

void TPlayerWidget::SendSeek(int positionMs) const {
  SendInt(kMsgSeek, "positionMs", positionMs);
}
