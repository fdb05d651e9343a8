#include "player/playlist.h"

#include "tests/scratch_folder.h"

#include <gtest/gtest.h>

TEST(Playlist, TakesAFoldersSongsInByteOrder) {
  const ScratchFolder folder;
  std::filesystem::create_directory(folder.File("sub"));
  for (const char* name : {"b.mp3", "a.OGG", "cover.jpg", "sub/c.flac"}) folder.Write(name, "");
  std::filesystem::create_directory_symlink(folder.Path(), folder.File("sub/loop"));
  TPlaylist list;
  EXPECT_EQ(list.Add(folder.Path()), 3);
  EXPECT_EQ(list.At(0)->title, "a");
  EXPECT_EQ(list.At(1)->title, "b");
  EXPECT_EQ(list.At(2)->path, folder.File("sub/c.flac"));
  EXPECT_EQ(list.Add(folder.File("sub/nothing")), 1) << "a file is taken as it is named";
}

TEST(Playlist, PassesOverSongsThatFailed) {
  TPlaylist list;
  for (const char* path : {"/a.mp3", "/b.mp3", "/c.mp3"}) list.Add(path);
  EXPECT_TRUE(list.SetCurrent(0));
  list.At(1)->failed = true;
  EXPECT_EQ(list.Neighbour(1), 2);
  EXPECT_EQ(list.Neighbour(-1), -1);
  list.At(2)->failed = true;
  EXPECT_EQ(list.Neighbour(1), -1) << "a list of bad songs comes to an end";
  EXPECT_FALSE(list.SetCurrent(3));
  EXPECT_EQ(list.Current(), 0);
}
