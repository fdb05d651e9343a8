#include "player/list/song_list_view.h"

#include "player/model/playlist.h"
#include "tests/support/qt_application.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QHoverEvent>
#include <QWheelEvent>

namespace {

struct SongListView : testing::Test {
  SongListView() {
    fSongs.Insert(TSongs(1000), 0);
    fView.resize(300, 200);
    fView.show();
  }
  void Play(int32 index) {
    TPlayerState state;
    state.songs = fSongs.Songs();
    state.current = index;
    fView.Show(state);
  }
  bool IsSeen(int32 index) const {
    const QRect row = fView.visualRect(fView.model()->index(index, 0));
    return fView.viewport()->rect().contains(row);
  }
  void ScrollBy(int steps) {
    QWheelEvent wheel({50, 50}, fView.viewport()->mapToGlobal(QPointF(50, 50)), {}, {0, 120 * steps}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(fView.viewport(), &wheel);
  }

  const OwnApplication<QApplication> fApplication;
  TPlaylist fSongs;
  TSongListView fView{BMessenger()};
};

} // namespace

TEST_F(SongListView, GoesToTheSongThatPlaysUnlessTheUserIsThere) {
  Play(700);
  EXPECT_TRUE(IsSeen(700)) << "also the first time";
  ScrollBy(200);
  Play(700);
  EXPECT_FALSE(IsSeen(700)) << "it is the same song still";
  Play(701);
  EXPECT_FALSE(IsSeen(701)) << "the user looks at something else";
  fView.FollowNextSong();
  Play(702);
  EXPECT_TRUE(IsSeen(702)) << "the user asked for it";

  ScrollBy(200);
  QHoverEvent leaves(QEvent::HoverLeave, QPointF(-1, -1), QPointF(-1, -1), QPointF(50, 50));
  QApplication::sendEvent(fView.viewport(), &leaves);
  Play(703);
  EXPECT_TRUE(IsSeen(703)) << "the pointer has left the list";
}

TEST_F(SongListView, FilterAndTypedNamesFindSongsWhateverTheirAccents) {
  const auto name = [&](int32 index, const char* title, const char* artist) {
    fSongs.Edit(index)->title = title;
    fSongs.Edit(index)->artist = artist;
  };
  name(300, "Élan vital", "Others");
  name(500, "Evening", "The Ｅlan Band");
  name(600, "Elan again", "");
  Play(0);
  const auto typed = [&](const char* text) {
    fView.setCurrentIndex(fView.model()->index(0, 0));
    for (const QChar c : QString(text)) {
      QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
      QApplication::sendEvent(&fView, &key);
    }
    QKeyEvent end(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&fView, &end);
    return fView.currentIndex().row();
  };
  EXPECT_EQ(typed("elan"), 300) << "titles come before artists";
  EXPECT_EQ(typed("elan a"), 600);
  EXPECT_EQ(typed("elan b"), 500) << "a word of the artist";
  EXPECT_EQ(typed("xyz"), 0) << "what is nowhere moves nothing";

  const auto shown = [&] {
    std::vector<int> rows;
    for (int row = 0; row < 1000; ++row)
      if (!fView.isRowHidden(row)) rows.push_back(row);
    return rows;
  };
  fView.SetFilter("ELAN band");
  EXPECT_EQ(shown(), std::vector<int>{500});
  EXPECT_EQ(fView.currentIndex().row(), 500) << "Return plays a song that is shown";
  name(700, "Band of Elan", "");
  Play(0);
  EXPECT_EQ(shown(), (std::vector<int>{500, 700})) << "tags are read while the filter is set";
  fView.SetFilter("");
  EXPECT_EQ(shown().size(), 1000U);
}

TEST_F(SongListView, TheHeaderFollowsTheChosenColumnsAndTheRoomOfTheList) {
  auto& header = *fView.findChild<QHeaderView*>();
  const auto widths = [&] {
    int all = 0;
    for (int i = 0; i < header.count(); ++i) all += header.sectionSize(i);
    return all;
  };
  TPlayerState state;
  state.songs = fSongs.Songs();
  state.choices.columns.shown[index_of(TColumn::kAlbum)] = true;
  fView.Show(state);
  EXPECT_FALSE(header.isSectionHidden(static_cast<int>(TColumn::kAlbum)));
  EXPECT_TRUE(header.isSectionHidden(static_cast<int>(TColumn::kTrack)));
  for (const int width : {300, 900, 420}) {
    fView.resize(width, 200);
    EXPECT_EQ(widths(), fView.viewport()->width()) << "no column is out of sight";
  }
  EXPECT_EQ(header.geometry().bottom() + 1, fView.viewport()->geometry().top()) << "above the songs";

  const int title = static_cast<int>(TColumn::kTitle);
  const int before = header.sectionSize(title);
  header.resizeSection(title, before + 30);
  EXPECT_EQ(header.sectionSize(title), before + 30);
  EXPECT_EQ(widths(), fView.viewport()->width()) << "its neighbour is narrower";
}
