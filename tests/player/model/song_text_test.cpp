#include "player/model/song_text.h"

#include "tests/support/testing.h"

TEST(SongText, AFileSaysItselfWhyItCannotBePlayed) {
  const ScratchFolder folder;
  EXPECT_EQ(file_error(folder.File("none"), "?"), "No such file or directory");
  EXPECT_EQ(file_error("http://radio.example/x", "loading failed"), "loading failed");
  EXPECT_EQ(file_error(folder.Path(), "?"), "this is a folder");
  EXPECT_EQ(file_error("/dev/null", "?"), "this is a pipe or a device, not a file");
  EXPECT_EQ(file_error(folder.Write("empty.mp3", ""), "?"), "the file is empty");
  EXPECT_EQ(file_error(folder.Write("text.mp3", "x"), "unknown format"), "unknown format");
}

TEST(SongText, OnlyAnEndWellBeforeItsTimeIsReported) {
  TSong song;
  song.path = "/a.mp3";
  song.durationMs = 185000;
  EXPECT_EQ(early_end(song, 182500), "");
  EXPECT_EQ(early_end(song, 187000), "");
  EXPECT_EQ(early_end(song, 65000), "/a.mp3 ends at 1:05 instead of 3:05: the file may be truncated");
}

TEST(SongText, TagsAreShownOnOneLine) {
  EXPECT_EQ(clean_text("\n one\r\n\ttwo\x7f\x01語\n"), " one two 語");
  EXPECT_EQ(clean_text("\x01\x02"), "");
  EXPECT_EQ(clean_text(std::string(1023, 'a') + "語" + std::string(5000000, 'b')), std::string(1023, 'a'));
  EXPECT_EQ(clean_text("caf\xe9 x"), "caf� x") << "else the kept list were no UTF-8 as a whole";
  EXPECT_EQ(clock_text(3723999), "1:02:03");
}
