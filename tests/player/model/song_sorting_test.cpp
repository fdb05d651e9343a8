#include "player/model/song_sorting.h"

#include "tests/support/songs.h"
#include "tests/support/testing.h"

TEST(SongSorting, ByEachKeyAndWithinAnAlbumByTrack) {
  const auto song = [](const char* path, const char* title, const char* artist, const char* album, int32 track) {
    TSong made;
    made.path = path;
    made.title = title;
    made.artist = artist;
    made.album = album;
    made.track = track;
    made.durationMs = 1000 * (track + 1);
    return made;
  };
  TPlaylist list;
  list.Insert({song("/10.mp3", "b", "", "", 0), song("/9.mp3", "A", "Zoe", "One", 10),
               song("/c.mp3", "é", "Abe", "One", 9), song("/d.mp3", "f", "Zoe", "Another", 2)},
              0);
  list.SetCurrent(1);
  const struct {
    TSongOrder order;
    std::vector<std::string> titles;
  } kCases[] = {{{TSortKey::kTitle}, {"A", "b", "é", "f"}},       {{TSortKey::kArtist}, {"é", "f", "A", "b"}},
                {{TSortKey::kAlbum}, {"f", "é", "A", "b"}},       {{TSortKey::kDuration}, {"b", "f", "é", "A"}},
                {{TSortKey::kPath}, {"A", "b", "é", "f"}},        {{TSortKey::kTrack}, {"f", "é", "A", "b"}},
                {{TSortKey::kTrack, true}, {"A", "é", "f", "b"}}, {{TSortKey::kArtist, true}, {"f", "A", "é", "b"}},
                {{TSortKey::kPath, true}, {"f", "é", "b", "A"}}};
  for (const auto& one : kCases) {
    EXPECT_TRUE(list.Arrange(sorted_ids(*list.Songs(), one.order)));
    std::vector<std::string> titles;
    for (const TSong& each : *list.Songs()) titles.push_back(each.title);
    EXPECT_EQ(titles, one.titles) << static_cast<int>(one.order.key) << one.order.isDescending;
    EXPECT_EQ(list.CurrentSong()->title, "A") << "stays current";
  }
  EXPECT_FALSE(list.Arrange(sorted_ids(*list.Songs(), {TSortKey::kPath, true}))) << "nothing changes";
  EXPECT_FALSE(list.Arrange({1})) << "songs are never lost";
}
