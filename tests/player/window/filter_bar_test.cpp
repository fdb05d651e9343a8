#include "player/window/filter_bar.h"

#include "player/list/song_list_view.h"
#include "tests/support/qt_application.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>

TEST(FilterBar, FiltersOnceForKeysTypedInQuickSuccessionAndBeforeAnArrowKey) {
  const OwnApplication<QApplication> application;
  TSongListView list{BMessenger()};
  TPlayerState state;
  TSongs songs(2);
  songs[1].title = "Bora";
  state.songs = std::make_shared<TSongs>(songs);
  list.Show(state);
  TFilterBar bar(&list);
  const auto press = [&](int key, const QString& text) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&bar, &event);
  };
  press(Qt::Key_B, "b");
  press(Qt::Key_O, "o");
  EXPECT_FALSE(list.isRowHidden(0)) << "while more keys are waiting";
  QApplication::processEvents();
  EXPECT_TRUE(list.isRowHidden(0));
  EXPECT_FALSE(list.isRowHidden(1));
  press(Qt::Key_X, "x");
  press(Qt::Key_Down, {});
  EXPECT_TRUE(list.isRowHidden(1)) << "an arrow key moves among the songs that match";
}
