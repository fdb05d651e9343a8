#include "player/model/playlist.h"

#include "tests/support/songs.h"
#include "tests/support/testing.h"

using testing::ElementsAre;

namespace {

std::vector<std::string> paths_of(const TPlaylist& list) {
  return paths_of(*list.Songs());
}

std::vector<int64> ids_at(const TPlaylist& list, const std::vector<int32>& rows) {
  std::vector<int64> ids;
  for (const int32 row : rows) ids.push_back(list.At(row)->id);
  return ids;
}

struct Playlist : testing::Test {
  Playlist() {
    list.Insert(songs_of({"a", "b", "c", "d", "e"}), -1);
    list.SetCurrent(2);
  }
  TPlaylist list;
};

} // namespace

TEST_F(Playlist, TheCurrentSongStaysCurrentWhereverItGoes) {
  list.Insert(songs_of({"x", "y"}), 1);
  EXPECT_EQ(list.CurrentSong()->path, "c");
  EXPECT_TRUE(list.Move(ids_at(list, {4, 0}), 3));
  EXPECT_THAT(paths_of(list), ElementsAre("x", "y", "a", "c", "b", "d", "e"));
  EXPECT_EQ(list.CurrentSong()->path, "c");
  EXPECT_FALSE(list.Move(ids_at(list, {0, 1}), 2)) << "they stand there already";
  EXPECT_TRUE(list.Remove(ids_at(list, {0, 2, 6})));
  EXPECT_THAT(paths_of(list), ElementsAre("y", "c", "b", "d"));
  EXPECT_EQ(list.CurrentSong()->path, "c");
}

TEST_F(Playlist, TakesUpTheKeptSongsBeforeItsOwn) {
  list.TakeUp(songs_of({"k", "c", "l", "a"}));
  EXPECT_THAT(paths_of(list), ElementsAre("k", "c", "l", "a", "b", "d", "e"));
  EXPECT_EQ(list.Current(), 1);
}

TEST_F(Playlist, AppendsWhatIsNotThereYetAsOftenAsItIsNamed) {
  std::unordered_set<std::string> added;
  list.Append(songs_of({"b", "x", "c"}), &added);
  list.Append(songs_of({"x", "y", "b"}), &added);
  EXPECT_THAT(paths_of(list), ElementsAre("a", "b", "c", "d", "e", "x", "x", "y"));
  EXPECT_EQ(list.CurrentSong()->path, "c");
}

TEST_F(Playlist, WhatWasHandedOutStaysAsItWas) {
  const auto before = list.Songs();
  EXPECT_EQ(list.Songs(), before) << "nothing has changed";
  list.Edit(0)->title = "new";
  list.Clear();
  EXPECT_EQ(before->size(), 5U);
  EXPECT_EQ(before->front().title, "");
}
