#include "player/list/song_list_model.h"

#include "player/list/list_total.h"
#include "player/model/playlist.h"
#include "tests/support/testing.h"

#include <QPersistentModelIndex>

/** Invariant: after any change, a persistent index still refers to its song, or is invalid if that was removed. */
TEST(SongListModel, RowsStayWithTheirSongs) {
  const unsigned seed = std::random_device()();
  std::mt19937 random(seed);
  const auto below = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
  TPlaylist list;
  list.Insert(TSongs(30), 0);
  TSongListModel model;
  model.Show(list.Songs(), -1);
  for (int round = 0; round < 300; ++round) {
    if (list.Count() < 10) list.Insert(TSongs(20), below(list.Count() + 1));
    model.Show(list.Songs(), list.Current());
    const int row = below(list.Count());
    const int64 id = list.At(row)->id;
    const QPersistentModelIndex held = model.index(row);
    const int other = below(list.Count());
    switch (below(4)) {
    case 0:
      list.Remove({list.At(other)->id});
      break;
    case 1:
      list.Move({list.At(other)->id, id}, below(list.Count() + 1));
      break;
    case 2:
      list.Insert(TSongs(static_cast<size_t>(below(5))), below(list.Count() + 1));
      break;
    default:
      list.Edit(other)->title = "known";
    }
    model.Show(list.Songs(), below(list.Count()));
    ASSERT_EQ(model.rowCount(), list.Count()) << "seed " << seed;
    for (int i = 0; i < list.Count(); ++i) ASSERT_EQ(model.At(i).id, list.At(i)->id) << "seed " << seed;
    if (held.isValid()) {
      ASSERT_EQ(model.At(held.row()).id, id) << "seed " << seed << " round " << round;
    } else {
      ASSERT_TRUE(other == row) << "seed " << seed << " round " << round;
    }
  }
}

TEST(ListTotal, CountsOneSongAndManyAndWhatIsKnownOfTheirLengths) {
  TSongs songs(1);
  songs[0].durationMs = 61000;
  EXPECT_EQ(list_total(songs), "1 song, 1:01");
  songs.resize(3);
  songs[1].durationMs = 3600000;
  EXPECT_EQ(list_total(songs), "3 songs, 1:01:01");
}
