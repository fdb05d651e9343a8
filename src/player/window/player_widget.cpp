#include "player/window/player_widget.h"

#include "common/app_info.h"
#include "platform/app/message.h"
#include "player/list/list_total.h"
#include "player/list/requests.h"
#include "player/list/song_actions.h"
#include "player/list/song_header.h"
#include "player/list/song_list_view.h"
#include "player/list/tag_reader.h"
#include "player/model/display_thread_check.h"
#include "player/model/player_messages.h"
#include "player/model/song_text.h"
#include "player/widgets/dropped_files.h"
#include "player/widgets/elided_label.h"
#include "player/widgets/shown_text.h"
#include "player/widgets/tool_tip.h"
#include "player/window/cover_view.h"
#include "player/window/file_choosers.h"
#include "player/window/filter_bar.h"
#include "player/window/playback_menu.h"
#include "player/window/player_controls.h"
#include "player/window/seek_bar.h"
#include "player/window/song_pictures.h"
#include "player/window/sort_menu.h"
#include "player/window/sound_dialog.h"
#include "player/window/source_menu.h"
#include "player/window/watch_menu.h"
#include "plugin/message_codes.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
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
constexpr QLatin1String kLetters("NPABXM");
/** After what the first song needs. */
constexpr int kReadTagsAfterMs = 1000;
constexpr int kMinWidth = 360;
constexpr int kMinHeight = 320;

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
  fList->SetCommands(kLetters, [this](Qt::Key key, int heldMs) { RunLetter(key, heldMs); });
  column->addWidget(fList, 1);
  fListTotal = new_label();
  fListTotal->setAlignment(Qt::AlignRight);
  fListTotal->setForegroundRole(QPalette::PlaceholderText);
  column->addWidget(fListTotal);
  MakeShortcuts();
  setAcceptDrops(true);
  ShowState({});
}

void TPlayerWidget::MakeHead() {
  fCover = new TCoverView;
  connect(fCover, &QWidget::customContextMenuRequested, this, [this](const QPoint& where) { OpenCoverMenu(where); });
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
  // The list handles the letters itself while it has the focus, to tell them from a name that is being typed.
  for (const QChar letter : kLetters) {
    const auto key = static_cast<Qt::Key>(letter.unicode());
    add(key, [this, key] { RunLetter(key, 0); });
  }
  add(Qt::Key_Left, [this] { SeekBy(-kSeekStepMs); });
  add(Qt::Key_Right, [this] { SeekBy(kSeekStepMs); });
  add(Qt::CTRL | Qt::Key_Up, [this] { ask(fPlayer, kMsgHostSpeedBy, "Percent", kSpeedStep); });
  add(Qt::CTRL | Qt::Key_Down, [this] { ask(fPlayer, kMsgHostSpeedBy, "Percent", -kSpeedStep); });
  add(Qt::CTRL | Qt::Key_0, [this] { ask(fPlayer, kMsgSpeed, "percent", 100); });
  add(Qt::Key_Plus, [this] { fControls->ChangeVolume(kVolumeStep); });
  add(Qt::Key_Minus, [this] { fControls->ChangeVolume(-kVolumeStep); });
  add(Qt::ALT | Qt::Key_Up, [this] { fList->MoveSelected(-1); });
  add(Qt::ALT | Qt::Key_Down, [this] { fList->MoveSelected(1); });
  add(Qt::CTRL | Qt::Key_O, [this] { choose_songs(this, fPlayer); });
  add(Qt::CTRL | Qt::SHIFT | Qt::Key_O, [this] { choose_folder(this, fPlayer); });
  add(Qt::CTRL | Qt::Key_S, [this] { choose_list_file(this, fPlayer); });
  add(Qt::CTRL | Qt::Key_Delete, [this] { ask(fPlayer, kMsgClearSongs); });
  add(Qt::CTRL | Qt::Key_F, [this] { OpenFilter(); });
  addRequest(Qt::CTRL | Qt::Key_Q, kMsgWindowCloses);
  add(Qt::ALT | Qt::Key_M, [this] { OpenMenu(); });
}

void TPlayerWidget::RunLetter(Qt::Key key, int agoMs) {
  switch (key) {
  case Qt::Key_N:
    return Skip(kMsgNext);
  case Qt::Key_P:
    return Skip(kMsgPrevious);
  case Qt::Key_A:
    return ask(fPlayer, kMsgRepeatFrom, "agoMs", agoMs);
  case Qt::Key_B:
    return ask(fPlayer, kMsgRepeatTo, "agoMs", agoMs);
  case Qt::Key_X:
    return ask(fPlayer, kMsgRepeatOff);
  default:
    return fControls->Mute();
  }
}

void TPlayerWidget::Skip(uint32 request) {
  fList->FollowNextSong();
  ask(fPlayer, request);
}

void TPlayerWidget::OpenFilter() {
  if (fFilterBar == nullptr) {
    fFilterBar = new TFilterBar(fList);
    auto* const column = static_cast<QVBoxLayout*>(layout());
    column->insertWidget(column->indexOf(fList), fFilterBar);
  }
  fFilterBar->Open();
}

void TPlayerWidget::OpenCoverMenu(const QPoint& where) {
  if (!fShown) return;
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(menu_text("Player_Play_Pause", Qt::Key_Space), this, [this] { ask(fPlayer, kMsgPlayPause); });
  menu->addSeparator();
  add_song_actions(menu, fPlayer, *fShown);
  menu->popup(fCover->mapToGlobal(where));
}

void TPlayerWidget::ShowAbout() {
  auto* const box =
      new QMessageBox(QMessageBox::NoIcon, "Sonivo", QStringLiteral("Sonivo  %1").arg(gAppVer), QMessageBox::Ok, this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setIconPixmap(windowIcon().pixmap(64));
  box->setInformativeText(shown_text("Player_About_Text"));
  box->open();
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
  fMenu->addAction(menu_text("Player_Open", Qt::CTRL | Qt::Key_O), this, [this] { choose_songs(this, fPlayer); });
  fMenu->addAction(menu_text("Player_Open_Folder", Qt::CTRL | Qt::SHIFT | Qt::Key_O), this,
                   [this] { choose_folder(this, fPlayer); });
  fMenu->addMenu(new_watch_menu(fMenu, fPlayer, &fState,
                                [this] { choose_watched_folder(this, fPlayer, fState.choices.watchedFolders); }));
  fMenu->addAction(menu_text("Player_Save_List", Qt::CTRL | Qt::Key_S), this,
                   [this] { choose_list_file(this, fPlayer); });
  fMenu->addSeparator();
  fMenu->addAction(menu_text("Player_Filter", Qt::CTRL | Qt::Key_F), this, [this] { OpenFilter(); });
  fMenu->addAction(menu_text("Player_Remove_Selected", Qt::Key_Delete), this, [this] { fList->RemoveSelected(); });
  fMenu->addAction(menu_text("Player_Clear_List", Qt::CTRL | Qt::Key_Delete), this,
                   [this] { ask(fPlayer, kMsgClearSongs); });
  fMenu->addSeparator();
  fMenu->addMenu(new_sort_menu(fMenu, fPlayer));
  auto* const columns = fMenu->addMenu(shown_text("Player_Columns"));
  connect(columns, &QMenu::aboutToShow, columns, [this, columns] {
    columns->clear();
    add_column_choices(columns, fState.choices.columns, fPlayer);
  });
  fMenu->addSeparator();
  fMenu->addMenu(new_playback_menu(fMenu, fPlayer, &fState.choices, [this] { OpenSound(); }));
  fMenu->addMenu(new_source_menu(fMenu, fPlayer, &fSources));
  fMenu->addSeparator();
  // The plug-ins have one window of preferences together; any of them opens it.
  fMenu->addAction(shown_text("Player_Preferences"), this, [this] { ask(fPlayer, kMsgPluginPrefs, "index", 0); });
  fMenu->addAction(shown_text("Player_About_Sonivo"), this, [this] { ShowAbout(); });
  fMenu->addAction(menu_text("Player_Quit", Qt::CTRL | Qt::Key_Q), this, [this] { ask(fPlayer, kMsgWindowCloses); });
  fPluginPlace = fMenu->insertSeparator(fMenu->actions().at(fMenu->actions().size() - 3));
  fMenu->setToolTipsVisible(true);
}

void TPlayerWidget::AddPluginMenus() {
  qDeleteAll(std::exchange(fPluginMenus, {}));
  for (size_t i = 0; i < fPlugins.size(); ++i) {
    const auto index = static_cast<int32>(i);
    auto* const menu = new QMenu(QString::fromStdString(fPlugins[i].name), fMenu);
    fMenu->insertMenu(fPluginPlace, menu);
    menu->menuAction()->setToolTip(QString::fromStdString(fPlugins[i].info));
    menu->addAction(shown_text("Player_Show"), this, [this, index] { ask(fPlayer, kMsgShowPlugin, "index", index); });
    menu->addAction(shown_text("Player_Preferences"), this,
                    [this, index] { ask(fPlayer, kMsgPluginPrefs, "index", index); });
    menu->addAction(shown_text("Player_About"), this, [this, index] { ask(fPlayer, kMsgAboutPlugin, "index", index); });
    fPluginMenus.push_back(menu);
  }
}

void TPlayerWidget::ShowState(const TPlayerState& state) {
  check_display_thread();
  fState = state;
  fPlugins = state.plugins;
  const TSong* const shown = shown_song(state);
  fShown = shown ? std::optional(*shown) : std::nullopt;
  const TSong song = fShown.value_or(TSong());
  fTitle->setText(shown ? QString::fromStdString(song.title) : shown_text("Player_No_Song"));
  fTitle->setToolTip(tool_tip(song.path));
  fArtist->setText(QString::fromStdString(song.artist));
  fArtist->setVisible(!song.artist.empty());
  fTotal->setText(QString::fromStdString(clock_text(state.durationMs)));
  ShowErrors(state.errors);
  fSeekBar->ShowSong(state);
  fControls->ShowState(state);
  fList->Show(state);
  ShowPictures(state);
  if (std::exchange(fSongs, state.songs) != state.songs) ShowTotal();
  if (fSoundDialog) fSoundDialog->ShowState(state);
  if (fTagReader) fTagReader->Show(fSongs);
  fSources = {state.sources, state.source, state.isBusReachable};
}

void TPlayerWidget::OpenSound() {
  ask(fPlayer, kMsgFindDevices);
  if (fSoundDialog == nullptr) {
    fSoundDialog = new TSoundDialog(this, fPlayer);
    fSoundDialog->setAttribute(Qt::WA_DeleteOnClose);
    fSoundDialog->ShowState(fState);
  }
  fSoundDialog->show();
  fSoundDialog->activateWindow();
}

void TPlayerWidget::ShowTotal() {
  fListTotal->setText(list_total(*fSongs));
  fListTotal->setVisible(!fSongs->empty());
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
  window()->installEventFilter(this);
  LimitSize();
  if (window()->focusWidget() == nullptr) fList->setFocus();
  if (fTagReader == nullptr) QTimer::singleShot(kReadTagsAfterMs, this, [this] { ReadTags(); });
}

/** A part has appeared or needs more room. */
bool TPlayerWidget::event(QEvent* event) {
  const bool isHandled = QWidget::event(event);
  if (event->type() == QEvent::LayoutRequest && isVisible()) LimitSize();
  return isHandled;
}

/** The menu is built again in the new language when it opens; the window's texts come with the next state. */
void TPlayerWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::LanguageChange) return;
  fPluginMenus.clear();
  delete std::exchange(fMenu, nullptr);
  if (!fShown) fTitle->setText(shown_text("Player_No_Song"));
  if (fSongs) ShowTotal();
}

/** The window cannot be made so small that its parts overlap, in any language and font. */
void TPlayerWidget::LimitSize() {
  window()->setMinimumSize(minimumSizeHint().expandedTo(QSize(kMinWidth, kMinHeight)));
}

bool TPlayerWidget::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::Move || type == QEvent::Resize || type == QEvent::WindowStateChange) ReportPlace();
  return QWidget::eventFilter(watched, event);
}

void TPlayerWidget::ReportPlace() {
  const QRect place = window()->normalGeometry();
  if (!place.isValid() || !isVisible()) return;
  BMessage message(kMsgWindowPlaced);
  message.AddRect("frame", {float(place.left()), float(place.top()), float(place.right()), float(place.bottom())});
  message.AddBool("maximized", window()->isMaximized());
  fPlayer.SendMessage(&message, BMessenger(), 0);
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
