/** The player's window as its user sees it: what it asks the player for, and what it shows. */

#include "player/window/player_widget.h"

#include "player/model/player_messages.h"
#include "player/model/playlist.h"
#include "player/texts/player_texts.h"
#include "player/widgets/shown_text.h"
#include "player/window/seek_bar.h"
#include "plugin/message_codes.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"
#include "tests/support/qt_application.h"
#include "tests/support/songs.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>

using namespace testing;

namespace {

/** "plmv id=2 before=0" */
std::string text_of(const BMessage& message) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(message.what >> shift);
  for (const std::string& name : message.FieldNames()) {
    for (int32 i = 0; i < 20; ++i) {
      if (const auto number = field<int32>(message, name.c_str(), i))
        text += ' ' + name + '=' + std::to_string(*number);
      if (const auto id = field<int64>(message, name.c_str(), i)) text += ' ' + name + '=' + std::to_string(*id);
      if (const auto isOn = field<bool>(message, name.c_str(), i)) text += ' ' + name + (*isOn ? "=on" : "=off");
      if (const auto words = field<std::string>(message, name.c_str(), i)) text += ' ' + name + "='" + *words + "'";
    }
  }
  return text;
}

struct PlayerWidget : testing::Test {
  PlayerWidget() {
    TSongs songs = songs_of({"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"});
    for (TSong& song : songs) {
      song.title = song.path.substr(3, 1);
      song.durationMs = 60000;
    }
    fSongs.Insert(songs, 0);
    fState.songs = fSongs.Songs();
    fState.current = 0;
    fState.durationMs = 200000;
    fState.volumePercent = 40;
    fState.plugins = {{"Editor", ""}};
    fState.sources = {{"vlc", "R&B player"}};
    fState.choices.watchedFolders = {"/m", "/other"};
    fWidget.resize(700, 600);
    fWidget.show();
    Show();
    QApplication::processEvents();
    fList.setCurrentIndex(fList.model()->index(1, 0));
    Asked();
  }
  ~PlayerWidget() override { load_player_texts(""); }

  void Show() { fWidget.ShowState(fState); }
  /** What the player was asked for since the last call, a request after another. */
  std::string Asked() {
    fPlayer->DeliverAll();
    std::string asked;
    for (const BMessage& message : fPlayer->Taken()) asked += (asked.empty() ? "" : "; ") + text_of(message);
    return asked;
  }
  std::string AskedByKeys(const std::vector<const char*>& keys) {
    for (const char* const key : keys)
      for (QShortcut* const shortcut : fWidget.findChildren<QShortcut*>())
        if (shortcut->key() == QKeySequence(key)) emit shortcut->activated();
    return Asked();
  }
  QWidget* Named(const char* text) const {
    for (QWidget* const widget : fWidget.findChildren<QWidget*>())
      if (widget->accessibleName() == shown_text(text)) return widget;
    return nullptr;
  }
  /** The menu of the button with its submenus, that of a song and that of the cover. */
  QList<QMenu*> OpenMenus() {
    while (QWidget* const before = QApplication::activePopupWidget()) before->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    fWidget.findChildren<QToolButton*>().last()->click();
    for (QWidget* const widget : {static_cast<QWidget*>(&fList), Named("Player_Cover")}) {
      QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), widget->mapToGlobal(QPoint(1, 1)));
      QApplication::sendEvent(widget, &event);
    }
    const QList<QMenu*> all = fWidget.findChildren<QMenu*>();
    for (const QPointer<QMenu>& menu : std::vector<QPointer<QMenu>>(all.begin(), all.end()))
      if (menu) emit menu->aboutToShow(); // may delete its submenus
    return fWidget.findChildren<QMenu*>();
  }
  /** The entries of that name in all menus, one after another. */
  std::string AskedByEntry(const QString& text) {
    QList<QAction*> entries;
    for (const QMenu* const menu : OpenMenus())
      for (QAction* const action : menu->actions())
        if (action->text().section('\t', 0, 0) == text) entries.push_back(action);
    Asked();
    for (QAction* const entry : entries) entry->trigger();
    return Asked();
  }
  std::vector<std::string> ShownLabels() const {
    std::vector<std::string> texts;
    for (const QLabel* const label : fWidget.findChildren<QLabel*>())
      if (label->isVisible() && !label->text().isEmpty()) texts.push_back(label->text().toStdString());
    return texts;
  }
  void Drop(QWidget* onto, const QPointF& where) {
    QMimeData files;
    files.setUrls({QUrl("file:///m/%C3%A4.mp3"), QUrl("file:///m/a.lrc")});
    QDragEnterEvent enter(where.toPoint(), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(onto, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(where, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(onto, &drop);
  }
  void Mouse(QEvent::Type type, const QPointF& where) {
    const bool up = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, where, where, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(fList.viewport(), &event);
  }
  QPoint InRow(int row, int fromMiddle) const {
    return fList.visualRect(fList.model()->index(row, 0)).center() + QPoint(0, fromMiddle);
  }

  const OwnApplication<QApplication> fApplication;
  const OwnLooper<Keeping<BLooper>> fPlayer{new Keeping<BLooper>};
  TPlaylist fSongs;
  TPlayerState fState;
  TPlayerWidget fWidget{BMessenger(fPlayer.get())};
  QListView& fList = *fWidget.findChild<QListView*>();
  QHeaderView& fHeader = *fList.findChild<QHeaderView*>();
};

} // namespace

TEST_F(PlayerWidget, EveryKeyAsksForWhatTheMenuSays) {
  EXPECT_EQ(AskedByKeys({"Space", "N", "P", "A", "B", "X", "Ctrl+0", "Alt+Up", "Alt+Down", "Ctrl+Del", "Ctrl+Q"}),
            "plpp; plnx; plpv; plra agoMs=0; plrb agoMs=0; plrx; plsp percent=100; plmv id=2 before=0; "
            "plmv id=2 before=3; plcl; plwc");
  EXPECT_EQ(AskedByKeys({"M", "M", "+", "-"}), "plvo percent=0; plvo percent=40; plvo percent=45; plvo percent=40");
  EXPECT_EQ(AskedByKeys({"Left", "Right", "Ctrl+Up", "Ctrl+Down"}),
            "SNsr Time=-5000; SNsr Time=5000; SNsp Percent=5; SNsp Percent=-5");
}

TEST_F(PlayerWidget, EveryEntryOfTheMenusAsksForWhatItSays) {
  const auto asked = [this](const std::vector<const char*>& entries) {
    std::string all;
    for (const char* const entry : entries) all += AskedByEntry(shown_text(entry)) + "; ";
    return all;
  };
  EXPECT_EQ(asked({"Player_Play", "Player_Play_Next", "Player_Move_Up", "Player_Move_Down", "Player_Remove",
                   "Player_Remove_Selected", "Player_Play_Pause", "Player_Clear_List", "Player_Quit"}),
            "plgo index=1; plmv id=2 before=1; plmv id=2 before=0; plmv id=2 before=3; plrm id=2 before=-1; "
            "plrm id=2 before=-1; plpp; plcl; plwc; ");
  EXPECT_EQ(asked({"Player_Shuffle", "Player_Repeat_Off", "Player_Repeat_Song", "Player_Repeat_List",
                   "Player_Stop_After", "Player_Gapless", "Player_Keep_Awake", "Player_Close_To_Tray"}),
            "plch Shfl=on; plch Rept=0; plch Rept=1; plch Rept=2; plch StpA=on; plch Gpls=off; plch Awak=on; "
            "plch Tray=on; ");
  EXPECT_EQ(asked({"Player_Sort_Album", "Player_Sort_File", "Player_Own_Sound", "Player_Watch_Stop", "Player_Show",
                   "Player_Preferences", "Player_About"}),
            "plso by=2; plso by=4; bsrC id=''; plch Wtch='/other'; plch Wtch='/m'; pgop index=0; pgpr index=0; "
            "pgpr index=0; pgab index=0; ");
  EXPECT_EQ(AskedByEntry("R&&B player"), "bsrC id='vlc'");
  EXPECT_EQ(asked({"Player_Song_Lyrics", "Player_Show_In_Folder"}),
            "plsl path='/m/b.mp3' before=-1; plsl path='/m/a.mp3' before=-1; plsf path='/m/b.mp3' before=-1; "
            "plsf path='/m/a.mp3' before=-1; ");
  asked({"Player_Copy_Title", "Player_About_Sonivo"});
  EXPECT_EQ(QApplication::clipboard()->text(), "a");
  EXPECT_TRUE(fWidget.findChild<QMessageBox*>()->isVisible());
}

TEST_F(PlayerWidget, NoTwoEntriesOfOneMenuHaveTheSameLetterInAnyLanguage) {
  for (const char* const language : {"English", "Japanese", "German", "French"}) {
    load_player_texts(std::string(TEXTS_FOLDER) + "/" + language + ".llt");
    QEvent change(QEvent::LanguageChange);
    QApplication::sendEvent(&fWidget, &change);
    size_t entries = 0;
    for (const QMenu* const menu : OpenMenus()) {
      std::set<QString> letters;
      for (const QAction* const action : menu->actions()) {
        const QKeySequence letter = QKeySequence::mnemonic(action->text());
        EXPECT_TRUE(letter.isEmpty() || letters.insert(letter.toString()).second)
            << language << ": " << action->text().toStdString();
      }
      entries += letters.size();
    }
    EXPECT_GT(entries, 40U) << "the menus of the button, of a song and of the cover";
  }
}

TEST_F(PlayerWidget, ShowsTheStateAndTheLanguageItIsGiven) {
  EXPECT_THAT(ShownLabels(), UnorderedElementsAre("a", "0:00", "3:20", "3 songs, 3:00"));
  fSongs.Edit(0)->artist = "Band";
  fState.songs = fSongs.Songs();
  fState.errors = "no session bus";
  Show();
  fWidget.ShowPosition(61000);
  EXPECT_THAT(ShownLabels(), UnorderedElementsAre("a", "Band", "no session bus", "1:01", "3:20", "3 songs, 3:00"));
  EXPECT_EQ(fWidget.findChild<TSeekBar*>()->value(), 61000);
  fState.errors.clear();
  fState.otherSong = std::make_shared<TSong>(songs_of({"/o.mp3"})[0]);
  Show();
  EXPECT_THAT(ShownLabels(), UnorderedElementsAre("1:01", "3:20", "3 songs, 3:00"));
  fState.otherSong.reset();
  fState.current = -1;
  fState.songs = std::make_shared<TSongs>();
  Show();
  EXPECT_THAT(ShownLabels(), UnorderedElementsAre("No song", "1:01", "3:20"));
  AskedByKeys({"Ctrl+F"});
  load_player_texts(std::string(TEXTS_FOLDER) + "/German.llt");
  QEvent change(QEvent::LanguageChange);
  QApplication::sendEvent(&fWidget, &change);
  EXPECT_THAT(ShownLabels(), Contains(player_text("Player_No_Song")));
  for (const char* const name : {"Player_Playlist", "Player_Position", "Player_Cover", "Player_Speed"})
    EXPECT_TRUE(Named(name)) << name;
  EXPECT_EQ(fWidget.findChild<QLineEdit*>()->placeholderText(), shown_text("Player_Filter_Hint"));
  EXPECT_EQ(fHeader.model()->headerData(2, Qt::Horizontal), shown_text("Player_Column_Title"));
  fWidget.resize(760, 600);
  QApplication::processEvents();
  EXPECT_EQ(Asked(), "plwp maximized=off");
}

TEST_F(PlayerWidget, TheSoundDialogShowsAndSendsTheChoices) {
  fState.choices.sound = {TReplayGain::kAlbum, -30, true, {1, -2, 3}, true, "pulse/gone"};
  fState.devices = {{"alsa/1", "Speakers"}, {"alsa/2", "Headphones"}};
  EXPECT_EQ(AskedByEntry(shown_text("Player_Sound")), "plfo");
  Show();
  auto* const dialog = fWidget.findChild<QDialog*>();
  ASSERT_TRUE(dialog && dialog->isVisible());
  auto* const device = dialog->findChildren<QComboBox*>()[0];
  auto* const gain = dialog->findChildren<QComboBox*>()[1];
  auto* const equalizer = dialog->findChild<QGroupBox*>();
  QStringList bands;
  QSlider* balance = nullptr;
  for (QSlider* const slider : dialog->findChildren<QSlider*>()) {
    if (slider->orientation() == Qt::Horizontal) balance = slider;
    if (slider->orientation() == Qt::Vertical) bands << QString::number(slider->value());
  }
  EXPECT_EQ(bands.join(' '), "1 -2 3 0 0 0 0 0 0 0");
  EXPECT_EQ(std::tuple(gain->currentIndex(), balance->value(), equalizer->isChecked()), std::tuple(2, -30, true));
  EXPECT_EQ(device->currentText(), "pulse/gone") << "listed though it is not connected";
  EXPECT_EQ(Asked(), "") << "showing a choice is none";

  device->setCurrentIndex(2);
  emit device->activated(2);
  gain->setCurrentIndex(1);
  emit gain->activated(1);
  balance->setValue(200);
  emit equalizer->clicked(false);
  dialog->findChildren<QSlider*>().last()->setValue(-20);
  EXPECT_EQ(Asked(), "plch Dvic='alsa/2'; plch RpGn=1; plch Blnc=100; plch Eqlz=off; "
                     "plch Band=1 Band=-2 Band=3 Band=0 Band=0 Band=0 Band=0 Band=0 Band=0 Band=-12");
  balance->setSliderDown(true);
  Show();
  EXPECT_EQ(balance->value(), 100) << "it is being dragged";
  EXPECT_EQ(gain->currentIndex(), 2);
  for (QPushButton* const button : dialog->findChildren<QPushButton*>()) button->click();
  EXPECT_EQ(Asked(),
            "plch RpGn=0 Blnc=0 Eqlz=off Band=0 Band=0 Band=0 Band=0 Band=0 Band=0 Band=0 Band=0 Band=0 Band=0");
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(PlayerWidget, FilesAreChosenForWhatTheEntrySays) {
  const std::tuple<const char*, QFileDialog::FileMode, QFileDialog::AcceptMode, const char*> kChoosers[] = {
      {"Player_Open", QFileDialog::ExistingFiles, QFileDialog::AcceptOpen, "plad path='/x.m3u8' before=-1"},
      {"Player_Open_Folder", QFileDialog::Directory, QFileDialog::AcceptOpen, "plad path='/x.m3u8' before=-1"},
      {"Player_Save_List", QFileDialog::AnyFile, QFileDialog::AcceptSave, "plsv path='/x.m3u8' before=-1"},
      {"Player_Watch_Add", QFileDialog::Directory, QFileDialog::AcceptOpen,
       "plch Wtch='/m' Wtch='/other' Wtch='/x.m3u8'"}};
  for (const auto& [entry, fileMode, acceptMode, asked] : kChoosers) {
    AskedByEntry(shown_text(entry));
    auto* const dialog = fWidget.findChild<QFileDialog*>();
    ASSERT_TRUE(dialog && dialog->isVisible()) << entry;
    EXPECT_EQ(dialog->fileMode(), fileMode) << entry;
    EXPECT_EQ(dialog->acceptMode(), acceptMode) << entry;
    emit dialog->filesSelected({"/x.m3u8"});
    emit dialog->fileSelected("/x.m3u8");
    EXPECT_EQ(Asked(), asked) << entry;
    delete dialog;
  }
}

TEST_F(PlayerWidget, SongsAreDraggedAndFilesDroppedWhereTheMouseIsReleased) {
  fList.selectionModel()->clear();
  Mouse(QEvent::MouseButtonPress, InRow(0, 0));
  Mouse(QEvent::MouseMove, InRow(0, 1));
  Mouse(QEvent::MouseButtonRelease, InRow(0, 1));
  EXPECT_EQ(Asked(), "") << "a click";
  Mouse(QEvent::MouseButtonPress, InRow(0, 0));
  Mouse(QEvent::MouseMove, InRow(2, -3));
  const QImage dragged = fList.grab().toImage();
  Mouse(QEvent::MouseMove, InRow(2, 3));
  EXPECT_NE(fList.grab().toImage(), dragged) << "a line shows the place";
  Mouse(QEvent::MouseButtonRelease, InRow(2, 3));
  Mouse(QEvent::MouseMove, InRow(1, 3));
  Mouse(QEvent::MouseButtonRelease, InRow(1, 3));
  EXPECT_EQ(Asked(), "plmv id=1 before=3");
  Drop(fList.viewport(), InRow(1, -3));
  Drop(&fWidget, QPointF(5, 5));
  EXPECT_EQ(Asked(), "pldf path='file:///m/%C3%A4.mp3' path='file:///m/a.lrc' before=1; "
                     "pldf path='file:///m/%C3%A4.mp3' path='file:///m/a.lrc' before=-1");
}

TEST_F(PlayerWidget, TheHeaderSortsAndItsMenuShowsAndHidesColumns) {
  const int title = static_cast<int>(TColumn::kTitle);
  emit fHeader.sectionClicked(0);
  for (const bool isDescending : {false, true}) {
    emit fHeader.sectionClicked(title);
    fState.order = TSongOrder{TSortKey::kTitle, isDescending};
    Show();
    EXPECT_EQ(std::tuple(fHeader.isSortIndicatorShown(), fHeader.sortIndicatorSection(), fHeader.sortIndicatorOrder()),
              std::tuple(true, title, isDescending ? Qt::DescendingOrder : Qt::AscendingOrder));
  }
  emit fHeader.sectionClicked(title);
  emit fHeader.sectionClicked(static_cast<int>(TColumn::kLength));
  EXPECT_EQ(Asked(), "plso by=0 descending=off; plso by=0 descending=on; plso by=-1 descending=on; "
                     "plso by=3 descending=off");
  TColumnChoices columns;
  columns.shown[index_of(TColumn::kAlbum)] = true;
  BMessage expected(kMsgChoose);
  archive_columns(columns, &expected);
  EXPECT_EQ(AskedByEntry(shown_text("Player_Column_Album")), text_of(expected));
}

TEST_F(PlayerWidget, FiltersOnceForKeysTypedInQuickSuccessionAndBeforeAnArrowKey) {
  AskedByKeys({"Ctrl+F"});
  auto* const bar = fWidget.findChild<QLineEdit*>();
  ASSERT_EQ(fWidget.focusWidget(), bar);
  bar->setClearButtonEnabled(false); // its animation, which nothing here would end, would be leaked
  const auto press = [&](int key, const QString& text = {}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(bar, &event);
    return Asked();
  };
  press(Qt::Key_B, "b");
  EXPECT_FALSE(fList.isRowHidden(0)) << "while more keys are waiting";
  QApplication::processEvents();
  EXPECT_TRUE(fList.isRowHidden(0) && !fList.isRowHidden(1));
  EXPECT_EQ(press(Qt::Key_Return), "plgo index=1");
  press(Qt::Key_X, "x");
  press(Qt::Key_Down);
  EXPECT_TRUE(fList.isRowHidden(1)) << "an arrow key moves among the songs that match";
  AskedByKeys({"Ctrl+F"});
  EXPECT_EQ(bar->selectedText(), "bx");
  press(Qt::Key_Escape);
  EXPECT_FALSE(bar->isVisible() || fList.isRowHidden(0));
  EXPECT_EQ(fWidget.focusWidget(), &fList);
}

TEST_F(PlayerWidget, EachCellOfARowIsDrawn) {
  fState.current = -1;
  fState.choices.columns.shown.fill(true);
  const std::pair<TColumn, std::function<void(TSong*)>> kChanges[] = {
      {TColumn::kMark, [this](TSong*) { fState.current = 1; }},
      {TColumn::kTitle, [](TSong* song) { song->title = "Title"; }},
      {TColumn::kTrack, [](TSong* song) { song->track = 7; }},
      {TColumn::kArtist, [](TSong* song) { song->artist = "Artist"; }},
      {TColumn::kAlbum, [](TSong* song) { song->album = "Album"; }},
      {TColumn::kLength, [](TSong* song) { song->durationMs = 61000; }},
      {TColumn::kArtist, [](TSong* song) { song->error = "it is missing, and this is why that is so"; }}};
  const auto cell = [&](TColumn column) {
    fState.songs = fSongs.Songs();
    Show();
    const int section = static_cast<int>(column);
    const QRect row = fList.visualRect(fList.model()->index(1, 0));
    const QRect place(fHeader.sectionViewportPosition(section), row.top(), fHeader.sectionSize(section), row.height());
    return fList.viewport()->grab(place).toImage();
  };
  for (const auto& [column, change] : kChanges) {
    const QImage before = cell(column);
    change(fSongs.Edit(1));
    EXPECT_NE(cell(column), before) << static_cast<int>(column);
  }
}

TEST_F(PlayerWidget, TheCoverAndTheWaveformAreThoseOfTheSong) {
  const ScratchFolder folder;
  setenv("XDG_CACHE_HOME", folder.File("cache").c_str(), 1);
  QImage cover(8, 8, QImage::Format_RGB888);
  cover.fill(Qt::red);
  ASSERT_TRUE(cover.save(QString::fromStdString(folder.File("folder.png"))));
  fSongs.Edit(0)->path = folder.Write("a.wav", beeping_wav(2));
  fSongs.Edit(1)->path = folder.Write("b.wav", "no sound");
  const auto play = [&](int32 index) {
    fState.current = index;
    fSongs.Edit(index)->played = true;
    fState.songs = fSongs.Songs();
    Show();
    return Asked();
  };
  const auto shown = [&] {
    return std::pair(Named("Player_Cover")->grab().toImage().pixelColor(24, 24) == Qt::red,
                     fWidget.findChild<TSeekBar*>()->grab().toImage());
  };
  const auto nothing = shown();
  play(0);
  play(1);
  EXPECT_EQ(play(0), "") << "being read";
  std::string asked;
  EXPECT_TRUE(eventually([&] { return QApplication::processEvents(), !(asked = Asked()).empty(); }));
  EXPECT_THAT(asked, AllOf(StartsWith("plcv path='" + fSongs.At(0)->path + "' file='" + folder.File("cache"))));
  const auto read = shown();
  EXPECT_TRUE(read.first);
  EXPECT_NE(read.second, nothing.second) << "waveform";
  EXPECT_EQ(play(1), "");
  EXPECT_EQ(shown(), nothing);
  EXPECT_EQ(play(0), asked) << "from the cache";
  EXPECT_EQ(shown(), read);
}
