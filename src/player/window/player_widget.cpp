#include "player/window/player_widget.h"

#include "player/list/requests.h"
#include "player/list/song_list_view.h"
#include "player/list/tag_reader.h"
#include "player/model/display_thread_check.h"
#include "player/model/player_messages.h"
#include "player/model/song_text.h"
#include "player/widgets/dropped_files.h"
#include "player/widgets/elided_label.h"
#include "player/widgets/tool_tip.h"
#include "player/window/cover_view.h"
#include "player/window/file_choosers.h"
#include "player/window/player_controls.h"
#include "player/window/seek_bar.h"
#include "player/window/song_pictures.h"
#include "player/window/source_menu.h"
#include "plugin/message_codes.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr double kArtistStrength = 0.65;
constexpr int kSeekStepMs = 5000;
constexpr int kSpeedStep = 5;
constexpr int kVolumeStep = 5;
/** After what the first song needs. */
constexpr int kReadTagsAfterMs = 1000;

QLabel* new_label(const QString& text = {}) {
  auto* const label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  return label;
}

} // namespace

TPlayerWidget::TPlayerWidget(const BMessenger& player) : fPlayer(player) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(14, 12, 14, 12);
  column->setSpacing(8);
  MakeHead();
  MakeSeekBar();
  fControls = new TPlayerControls(player);
  connect(fControls->MenuButton(), &QToolButton::clicked, this, [this] { OpenMenu(); });
  column->addWidget(fControls);
  fList = new TSongListView(player);
  column->addWidget(fList, 1);
  MakeShortcuts();
  setAcceptDrops(true);
  ShowState({});
}

void TPlayerWidget::MakeHead() {
  fCover = new TCoverView;
  fTitle = new TElidedLabel;
  QFont large = fTitle->font();
  large.setPointSizeF(large.pointSizeF() * 1.5); // not bold: loading a second font delays the start
  fTitle->setFont(large);
  fArtist = new TElidedLabel(kArtistStrength);
  auto* const texts = new QVBoxLayout;
  texts->addStretch(1);
  texts->addWidget(fTitle);
  texts->addWidget(fArtist);
  texts->addStretch(1);
  auto* const head = new QHBoxLayout;
  head->setSpacing(12);
  head->addWidget(fCover);
  head->addLayout(texts, 1);
  static_cast<QVBoxLayout*>(layout())->addLayout(head);
}

void TPlayerWidget::MakeSeekBar() {
  fSeekBar = new TSeekBar;
  connect(fSeekBar, &QSlider::valueChanged, this, [this](int value) { ask(fPlayer, kMsgSeek, "positionMs", value); });
  layout()->addWidget(fSeekBar);
  fElapsed = new_label(QString::fromStdString(clock_text(0)));
  fTotal = new_label(QString::fromStdString(clock_text(0)));
  auto* const times = new QHBoxLayout;
  times->addWidget(fElapsed);
  times->addStretch(1);
  times->addWidget(fTotal);
  static_cast<QVBoxLayout*>(layout())->addLayout(times);
}

void TPlayerWidget::MakeShortcuts() {
  const auto add = [this](const QKeySequence& key, auto action) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, action);
  };
  const auto addRequest = [&](const QKeySequence& key, uint32 request) {
    add(key, [this, request] { ask(fPlayer, request); });
  };
  addRequest(Qt::Key_Space, kMsgPlayPause);
  for (const auto& [key, request] : {std::pair{Qt::Key_N, kMsgNext}, {Qt::Key_P, kMsgPrevious}}) {
    add(key, [this, request = request] {
      fList->FollowNextSong();
      ask(fPlayer, request);
    });
  }
  addRequest(Qt::Key_A, kMsgRepeatFrom);
  addRequest(Qt::Key_B, kMsgRepeatTo);
  addRequest(Qt::Key_X, kMsgRepeatOff);
  add(Qt::Key_Left, [this] { SeekBy(-kSeekStepMs); });
  add(Qt::Key_Right, [this] { SeekBy(kSeekStepMs); });
  add(Qt::CTRL | Qt::Key_Up, [this] { ask(fPlayer, kMsgHostSpeedBy, "Percent", kSpeedStep); });
  add(Qt::CTRL | Qt::Key_Down, [this] { ask(fPlayer, kMsgHostSpeedBy, "Percent", -kSpeedStep); });
  add(Qt::CTRL | Qt::Key_0, [this] { ask(fPlayer, kMsgSpeed, "percent", 100); });
  add(Qt::Key_Plus, [this] { fControls->ChangeVolume(kVolumeStep); });
  add(Qt::Key_Minus, [this] { fControls->ChangeVolume(-kVolumeStep); });
  add(Qt::Key_M, [this] { fControls->Mute(); });
  add(Qt::ALT | Qt::Key_Up, [this] { fList->MoveSelected(-1); });
  add(Qt::ALT | Qt::Key_Down, [this] { fList->MoveSelected(1); });
  add(Qt::CTRL | Qt::Key_O, [this] { choose_songs(this, fPlayer); });
  add(Qt::CTRL | Qt::SHIFT | Qt::Key_O, [this] { choose_folder(this, fPlayer); });
  add(Qt::CTRL | Qt::Key_S, [this] { choose_list_file(this, fPlayer); });
  add(Qt::CTRL | Qt::Key_Delete, [this] { ask(fPlayer, kMsgClearSongs); });
  add(Qt::ALT | Qt::Key_M, [this] { OpenMenu(); });
}

void TPlayerWidget::SeekBy(int ms) {
  ask(fPlayer, kMsgHostSeekBy, "Time", ms);
}

void TPlayerWidget::OpenMenu() {
  if (fMenu == nullptr) MakeMenu();
  AddPluginMenus();
  QToolButton* const button = fControls->MenuButton();
  fMenu->popup(button->mapToGlobal(QPoint(button->width() - fMenu->sizeHint().width(), button->height())));
}

/** The keys after the tabs are only labels: MakeShortcuts makes them work before the menu exists. */
void TPlayerWidget::MakeMenu() {
  fMenu = new QMenu(this);
  fMenu->addAction(tr("&Open songs or playlists…\tCtrl+O"), this, [this] { choose_songs(this, fPlayer); });
  fMenu->addAction(tr("Open &folder…\tCtrl+Shift+O"), this, [this] { choose_folder(this, fPlayer); });
  fMenu->addAction(tr("&Save playlist…\tCtrl+S"), this, [this] { choose_list_file(this, fPlayer); });
  fMenu->addSeparator();
  fMenu->addAction(tr("&Remove selected songs\tDelete"), this, [this] { fList->RemoveSelected(); });
  fMenu->addAction(tr("&Clear playlist\tCtrl+Delete"), this, [this] { ask(fPlayer, kMsgClearSongs); });
  fMenu->addSeparator();
  fMenu->addMenu(new_source_menu(this, fPlayer, &fSources));
  fMenu->setToolTipsVisible(true);
}

void TPlayerWidget::AddPluginMenus() {
  qDeleteAll(std::exchange(fPluginMenus, {}));
  for (size_t i = 0; i < fPlugins.size(); ++i) {
    const auto index = static_cast<int32>(i);
    QMenu* const menu = fMenu->addMenu(QString::fromStdString(fPlugins[i].name));
    menu->menuAction()->setToolTip(QString::fromStdString(fPlugins[i].info));
    menu->addAction(tr("&Show"), this, [this, index] { ask(fPlayer, kMsgShowPlugin, "index", index); });
    menu->addAction(tr("&Preferences…"), this, [this, index] { ask(fPlayer, kMsgPluginPrefs, "index", index); });
    menu->addAction(tr("&About"), this, [this, index] { ask(fPlayer, kMsgAboutPlugin, "index", index); });
    fPluginMenus.push_back(menu);
  }
}

void TPlayerWidget::ShowState(const TPlayerState& state) {
  check_display_thread();
  fPlugins = state.plugins;
  const TSong* const shown = shown_song(state);
  const TSong song = shown ? *shown : TSong();
  fTitle->setText(shown ? QString::fromStdString(song.title) : tr("No song"));
  fTitle->setToolTip(tool_tip(song.path));
  fArtist->setText(QString::fromStdString(song.artist));
  fArtist->setVisible(!song.artist.empty());
  fTotal->setText(QString::fromStdString(clock_text(state.durationMs)));
  ShowErrors(state.errors);
  fSeekBar->ShowSong(state);
  fControls->ShowState(state);
  fList->Show(state);
  ShowPictures(state);
  fSongs = state.songs;
  if (fTagReader) fTagReader->Show(fSongs);
  fSources = {state.sources, state.source, state.isBusReachable};
}

/** The label is created lazily. */
void TPlayerWidget::ShowErrors(const std::string& errors) {
  if (fErrorLabel == nullptr && errors.empty()) return;
  if (fErrorLabel == nullptr) {
    fErrorLabel = new_label();
    fErrorLabel->setWordWrap(true);
    fErrorLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    constexpr int kBelowTheHead = 1;
    static_cast<QVBoxLayout*>(layout())->insertWidget(kBelowTheHead, fErrorLabel);
  }
  const bool isDark = palette().color(QPalette::Window).lightness() < 128;
  QPalette warning;
  warning.setColor(QPalette::WindowText, isDark ? QColor(0xff, 0x8a, 0x80) : QColor(0xb7, 0x1c, 0x1c));
  fErrorLabel->setPalette(warning);
  fErrorLabel->setText(QString::fromStdString(errors));
  fErrorLabel->setToolTip(tool_tip(errors)); // a path without a blank is not wrapped
  fErrorLabel->setVisible(!errors.empty());
}

/** Only of songs that the sound could begin; they stay when the song has ended. */
void TPlayerWidget::ShowPictures(const TPlayerState& state) {
  const TSong* const song = shown_song(state);
  const bool isKnown = song && song->played && song->error.empty();
  if (fPictures == nullptr && !isKnown) return;
  if (fPictures == nullptr) {
    fPictures = new TSongPictures(this, [this](const TSongPicture& picture, const std::string& coverFile) {
      fSeekBar->ShowLoudness(picture.loudness);
      fCover->Show(cover_image(picture));
      if (!coverFile.empty()) send_cover(fPlayer, fPictures->Song(), coverFile);
    });
  }
  fPictures->Show(isKnown ? song->path : std::string());
}

void TPlayerWidget::ShowPosition(int32 positionMs) {
  fSeekBar->ShowPosition(positionMs);
  fElapsed->setText(QString::fromStdString(clock_text(positionMs)));
}

/** The initial focus is on the list; a widget without a window cannot have it. */
void TPlayerWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (window()->focusWidget() == nullptr) fList->setFocus();
  if (fTagReader == nullptr) QTimer::singleShot(kReadTagsAfterMs, this, [this] { ReadTags(); });
}

void TPlayerWidget::ReadTags() {
  if (fTagReader) return;
  fTagReader = new TTagReader(
      this, [this] { return fList->FirstSeenRow(); },
      [this](const std::vector<TReadTags>& found) { send_tags(fPlayer, found); }, tag_program());
  fTagReader->Show(fSongs);
}

void TPlayerWidget::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void TPlayerWidget::dropEvent(QDropEvent* event) {
  ask_about_paths(fPlayer, kMsgDropFiles, dropped_files(*event));
  event->acceptProposedAction();
}
