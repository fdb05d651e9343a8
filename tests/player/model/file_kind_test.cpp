#include "player/model/file_kind.h"

#include <gtest/gtest.h>

TEST(FileKind, GoesByTheNameAndLeavesTheUnknownToThePlayer) {
  const std::pair<const char*, TFileKind> rows[] = {{"/m/a.mp3", TFileKind::kSong},
                                                    {"file:///m/a%20b.LRC", TFileKind::kLyrics},
                                                    {"/m/a.txt", TFileKind::kLyrics},
                                                    {"/m/cover.JPG", TFileKind::kOther},
                                                    {"/m/album", TFileKind::kSong},
                                                    {"/m/list.m3u8", TFileKind::kSong},
                                                    {"/m.png/album", TFileKind::kSong},
                                                    {"/m/.txt", TFileKind::kSong},
                                                    {"/m/a.tta", TFileKind::kSong},
                                                    {"http://host/a", TFileKind::kSong},
                                                    {"", TFileKind::kSong}};
  for (const auto& [path, kind] : rows) EXPECT_EQ(file_kind(path), kind) << path;
}
