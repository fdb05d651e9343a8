#include "player/model/playlist.h"
#include "player/texts/player_texts.h"
#include "player/widgets/shown_text.h"
#include "player/window/player_widget.h"
#include "tests/support/qt_application.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QListView>
#include <QMenu>
#include <QToolButton>

#include <set>

namespace {

struct Menus : testing::Test {
  ~Menus() override { load_player_texts(""); }
  OwnApplication<QApplication> fApplication;
};

QWidget* named(const QWidget& player, const char* name) {
  for (QWidget* const widget : player.findChildren<QWidget*>())
    if (widget->accessibleName() == shown_text(name)) return widget;
  return nullptr;
}

/** The menu of the button with its submenus, that of a song and that of the cover. */
QList<QMenu*> open_all(TPlayerWidget* player) {
  player->findChildren<QToolButton*>().last()->click();
  auto* const list = static_cast<QListView*>(named(*player, "Player_Playlist"));
  list->setCurrentIndex(list->model()->index(0, 0));
  for (QWidget* const widget : {static_cast<QWidget*>(list), named(*player, "Player_Cover")}) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), widget->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(widget, &event);
  }
  const QList<QMenu*> menus = player->findChildren<QMenu*>();
  for (QMenu* const menu : menus) emit menu->aboutToShow();
  return menus;
}

} // namespace

TEST_F(Menus, NoTwoEntriesOfOneMenuHaveTheSameLetterInAnyLanguage) {
  TPlaylist songs;
  songs.Insert(TSongs(1), 0);
  TPlayerState state;
  state.songs = songs.Songs();
  state.current = 0;
  state.plugins = {{}};
  for (const char* const language : {"English", "Japanese", "German", "French"}) {
    load_player_texts(std::string(TEXTS_FOLDER) + "/" + language + ".llt");
    TPlayerWidget player{BMessenger()};
    player.ShowState(state);
    size_t entries = 0;
    for (const QMenu* const menu : open_all(&player)) {
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
