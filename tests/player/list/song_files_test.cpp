#include "player/list/song_files.h"

#include "player/app/kept_list.h"
#include "player/list/m3u.h"
#include "tests/support/songs.h"
#include "tests/support/testing.h"

using namespace testing;

namespace {

struct TGathered : TSongTaker {
  explicit TGathered(const std::string& path, size_t enough = 1000) : most(enough) { gather_songs(path, this); }
  void Take(TSong song) override { songs.push_back(std::move(song)); }
  void ReportError(std::string error) override { errors.push_back(std::move(error)); }
  bool HasEnough() const override { return songs.size() >= most; }
  const size_t most;
  TSongs songs;
  std::vector<std::string> errors;
};

} // namespace

TEST(SongFiles, AFolderGivesItsSongsInByteOrder) {
  const ScratchFolder folder;
  std::filesystem::create_directory(folder.File("sub"));
  std::filesystem::create_directory(folder.File("sub x"));
  for (const char* name : {"b.mp3", "a.OGG", "cover.jpg", "list.m3u", "sub/c.flac", "sub x/d.wav", "sub.mp3", "z.mp3"})
    folder.Write(name, "");
  std::filesystem::create_directory_symlink(folder.Path(), folder.File("sub/loop"));
  const TGathered gathered(folder.Path());
  EXPECT_THAT(paths_of(gathered.songs),
              ElementsAre(folder.File("a.OGG"), folder.File("b.mp3"), folder.File("sub x/d.wav"),
                          folder.File("sub.mp3"), folder.File("sub/c.flac"), folder.File("z.mp3")));
  EXPECT_EQ(gathered.songs[1].title, "b");
  EXPECT_EQ(TGathered(folder.Path(), 4).songs.size(), 4U) << "no more than is wanted";
  EXPECT_EQ(TGathered(folder.File("sub/nothing")).songs.size(), 1U) << "a file is taken as it is named";
  EXPECT_THAT(TGathered(folder.File("sub/loop/sub/../sub")).errors, ElementsAre()) << "through the link";
  std::filesystem::create_directory(folder.File("none"));
  EXPECT_THAT(TGathered(folder.File("none")).errors, ElementsAre(HasSubstr("No songs found in")));
}

TEST(SongFiles, NestedListsEndAndReportWhatIsMissing) {
  const ScratchFolder folder;
  std::filesystem::create_directory(folder.File("in"));
  for (const char* name : {"1.mp3", "in/2.mp3", "3.mp3"}) folder.Write(name, "");
  const std::string outer = folder.Write(
      "outer.m3u", "1.mp3\r\nin/inner.m3u8\r\n3.mp3\r\ngone.mp3\r\nalso gone.mp3\r\nhttp://radio.example/x\r\n");
  folder.Write("in/inner.m3u8", "\xef\xbb\xbf#EXTM3U\n2.mp3\n../outer.m3u\nlost.m3u\n");
  const TGathered gathered(outer);
  EXPECT_THAT(paths_of(gathered.songs),
              ElementsAre(folder.File("1.mp3"), folder.File("in/2.mp3"), folder.File("3.mp3"), folder.File("gone.mp3"),
                          folder.File("also gone.mp3"), "http://radio.example/x"));
  EXPECT_EQ(gathered.songs.back().error, "") << "checked when it is played";
  EXPECT_EQ(gathered.songs[3].error, "No such file or directory");
  EXPECT_EQ(gathered.songs[2].error, "");
  EXPECT_THAT(gathered.errors, ElementsAre(HasSubstr("contains itself"), HasSubstr("Cannot read the playlist"),
                                           HasSubstr("2 songs of the playlist " + outer +
                                                     " cannot be played, the first: " + folder.File("gone.mp3"))));
}

TEST(SongFiles, WhatIsNoSongStaysInTheListWithAnError) {
  const ScratchFolder folder;
  const std::string pipe = folder.File("pipe.mp3");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string filter = "av://lavfi:anullsrc,ametadata=mode=print:file=precious.txt";
  const std::string list = folder.Write("a.m3u", filter + "\npipe.mp3\nsub.m3u\nFILE://host/a.mp3\n");
  std::filesystem::create_directory(folder.File("sub.m3u"));
  const TGathered gathered(list);
  EXPECT_THAT(paths_of(gathered.songs), ElementsAre(filter, pipe, "FILE://host/a.mp3"));
  for (const TSong& song : gathered.songs) EXPECT_NE(song.error, "") << song.path;
  EXPECT_THAT(gathered.errors,
              ElementsAre(HasSubstr("Cannot read the playlist"), HasSubstr("3 songs of the playlist")));
  for (const std::string& text : {filter, pipe, std::string("/dev/zero"), "file://host" + pipe}) {
    const TGathered handedOver(text);
    ASSERT_EQ(handedOver.songs.size(), 1U) << text;
    EXPECT_NE(handedOver.songs[0].error, "") << text;
    EXPECT_EQ(handedOver.errors.size(), 1U) << text;
  }
  EXPECT_EQ(TGathered("file://" + folder.Write("a b.mp3", "")).songs[0].path, folder.File("a b.mp3"));
  EXPECT_EQ(TGathered("HTTP://radio.example/x").songs[0].path, "http://radio.example/x");
}

TEST(SongFiles, AListIsReadAsFarAsItsLimits) {
  const std::string longText(5000000, 'x');
  const TSongs songs =
      parse_m3u("#EXTART:" + longText + "\n#EXTINF:1," + longText + "\n/a.mp3\n/" + longText + "\n", "/");
  ASSERT_EQ(songs.size(), 2U);
  EXPECT_EQ(songs[0].title.size(), 1024U);
  EXPECT_EQ(songs[0].artist.size(), 1024U);
  EXPECT_EQ(songs[1].error, "its name is too long");
  EXPECT_LE(songs[1].path.size(), 1024U);
  const ScratchFolder folder;
  const TGathered gathered(folder.Write("empty.m3u", std::string(kMostListLines, '\n') + "a.mp3\n"));
  EXPECT_THAT(gathered.errors, ElementsAre(HasSubstr("Only the first 1000000 lines")));
  EXPECT_TRUE(gathered.songs.empty());
}

TEST(SongFiles, ListsFromElsewhereAreUnderstood) {
  const TSongs songs = parse_m3u("#EXTM3U\n#EXTINF:83.5,Caf\xe9 - Lied\nsub\\caf\xe9.mp3\n#PLAYLIST:x\n\n"
                                 "http://radio.example/stream.mp3\n#EXTINF:5,Hello, World\nfile:///m/%C3%A4%20b.ogg",
                                 "/l");
  EXPECT_THAT(paths_of(songs), ElementsAre("/l/sub/café.mp3", "http://radio.example/stream.mp3", "/m/ä b.ogg"));
  EXPECT_EQ(songs[0].title, "Café - Lied");
  EXPECT_EQ(songs[0].durationMs, 83500);
  EXPECT_EQ(songs[1].title, "stream") << "not that of the song before";
  EXPECT_EQ(songs[2].title, "Hello, World");
}

TEST(SongFiles, EveryNameComesBackFromAListThatWasWritten) {
  TSongs songs;
  for (const char* path :
       {"/m/a/plain.mp3", "/m/b # c.mp3", "/m/#first.mp3", "/m/two\nlines.mp3", "/m/ blank .mp3", "/m/back\\slash.mp3",
        "/other/100%.mp3", "/m/no\xff utf8.mp3", "/m/http:/x.mp3", "/m/..dots.mp3"}) {
    TSong song;
    song.path = path;
    song.title = "Title - with a line";
    song.artist = songs.size() % 2 ? "Artist" : "";
    song.durationMs = 61000;
    songs.push_back(song);
  }
  const std::string text = m3u_text(songs, "/m");
  EXPECT_THAT(text, HasSubstr("\na/plain.mp3\n")) << "relative, so that the folder can be moved";
  const TSongs back = parse_m3u(text, "/m");
  EXPECT_EQ(paths_of(back), paths_of(songs));
  for (size_t i = 0; i < back.size(); ++i) {
    EXPECT_EQ(back[i].title, songs[i].title);
    EXPECT_EQ(back[i].artist, songs[i].artist);
    EXPECT_EQ(back[i].durationMs, songs[i].durationMs);
  }
}

TEST(SongFiles, TheKeptListComesBackAndASpoiltOneDoesNoHarm) {
  const ScratchFolder folder;
  const std::string path = folder.File("settings/Playlist.m3u8");
  TKeptList list{TSongs(4), 1, 12345, 40};
  list.songs[0].path = "/a\n#SONIVO:current=0,position=1,volume=1";
  list.songs[1].path = "/日本.mp3";
  list.songs[2].path = "/\xff.mp3";
  list.songs[2].title = "\xff"; // must not spoil the others' names
  list.songs[3].path = "http://radio.example/音.mp3";
  ASSERT_TRUE(save_kept_list(list, path));
  const TKeptList back = load_kept_list(path);
  EXPECT_EQ(paths_of(back.songs), paths_of(list.songs));
  EXPECT_EQ(back.current, 1);
  EXPECT_EQ(back.positionMs, 12345);
  EXPECT_EQ(back.volumePercent, 40);

  folder.Write("settings/Playlist.m3u8", "#EXTM3U\n#SONIVO:current=99,position=-5,volume=1000\n/a.mp3\n");
  const TKeptList spoilt = load_kept_list(path);
  EXPECT_EQ(spoilt.current, 0);
  EXPECT_EQ(spoilt.positionMs, 0);
  EXPECT_EQ(spoilt.volumePercent, 100);
  EXPECT_EQ(load_kept_list(folder.File("none")).current, -1);
  EXPECT_FALSE(save_kept_list(list, "/proc/none/Playlist.m3u8"));
}
