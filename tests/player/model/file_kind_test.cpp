#include "player/model/file_kind.h"

#include <gtest/gtest.h>

TEST(FileKind, GoesByTheNameAndLeavesTheUnknownToThePlayer) {
  const std::pair<const char*, TDroppedKind> rows[] = {{"/m/a.mp3", TDroppedKind::kSong},
                                                       {"file:///m/a%20b.LRC", TDroppedKind::kLyrics},
                                                       {"/m/a.txt", TDroppedKind::kLyrics},
                                                       {"/m/cover.JPG", TDroppedKind::kOther},
                                                       {"/m/album", TDroppedKind::kSong},
                                                       {"/m/list.m3u8", TDroppedKind::kSong},
                                                       {"/m.png/album", TDroppedKind::kSong},
                                                       {"/m/.txt", TDroppedKind::kSong},
                                                       {"/m/a.tta", TDroppedKind::kSong},
                                                       {"http://host/a", TDroppedKind::kSong},
                                                       {"", TDroppedKind::kSong}};
  for (const auto& [path, kind] : rows) EXPECT_EQ(file_kind(path), kind) << path;
}
