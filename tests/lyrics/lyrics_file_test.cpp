#include "lyrics/lyrics_file.h"

#include "lyrics/lyrics_fname.h"
#include "tests/support/messages.h"

using namespace testing;
using Lines = std::list<std::string>;

namespace {

struct Loaded {
  bool ok = false;
  Lines lines{"untouched"};
  long crType = 77;
  long encoding = 77;
};

Loaded load(const std::string& path, long wanted = kDetectEncoding) {
  Loaded loaded;
  loaded.ok = load_lyrics_as(wanted, ref_of(path), &loaded.lines, &loaded.crType, &loaded.encoding);
  return loaded;
}

struct LyricsFile : testing::Test {
  Loaded Load(const std::string& bytes, long wanted = kDetectEncoding) {
    return load(fFolder.Write("a.lrc", bytes), wanted);
  }
  ScratchFolder fFolder;
};

} // namespace

TEST_F(LyricsFile, LineEndsAreFoundByCounting) {
  const std::tuple<const char*, long, Lines> files[] = {{"a\r\nb\r\n", 1, {"a", "b"}},
                                                        {"a\rb\r", 2, {"a", "b"}},
                                                        {"a\nb", 0, {"a", "b"}},
                                                        {"a\r\nb\n", 0, {"a", "b"}},
                                                        {"", 0, {}},
                                                        {"a\n\nb\n", 0, {"a", "", "b"}},
                                                        {"a\rb\n", 1, {"ab"}},
                                                        {"a\rb\nc\n", 0, {"ab", "c"}},
                                                        {"\n", 0, {""}}};
  for (const auto& [bytes, crType, lines] : files) {
    const Loaded loaded = Load(bytes);
    EXPECT_TRUE(loaded.ok);
    EXPECT_EQ(loaded.crType, crType) << testing::PrintToString(bytes);
    EXPECT_EQ(loaded.lines, lines) << testing::PrintToString(bytes);
  }
}

TEST_F(LyricsFile, EncodingIsFoundOutOrTakenAsTold) {
  EXPECT_EQ(Load("日本\n").encoding, 0);
  EXPECT_EQ(Load("\x93\xfa\x96\x7b\n").encoding, 1);
  EXPECT_EQ(Load("\x1b$BF|K\\\x1b(B\n").encoding, 2);
  EXPECT_EQ(Load("日本\x1b").encoding, 2) << "an ESC decides";
  EXPECT_EQ(Load("abc\xe6\x97").encoding, 1) << "cut off by the end";
  EXPECT_THAT(lines_of_bytes("\x93\xfa\r\nb", TEncoding::kShiftJis), ElementsAre("日", "b"));
  const Loaded told = Load("\x93\xfa\n", 0);
  EXPECT_EQ(told.encoding, 0);
  EXPECT_THAT(told.lines, ElementsAre("\x93\xfa"));
  EXPECT_THAT(Load("\x93\xfa\n", 9).lines, ElementsAre("\x93\xfa")) << "an unknown number converts nothing";
}

TEST_F(LyricsFile, TextEndsAtANulKeepsItsByteOrderMarkAndIsCutAtTwiceItsLength) {
  EXPECT_THAT(Load(std::string("a\nb\0c\nd", 7)).lines, ElementsAre("a", "b"));
  EXPECT_THAT(Load(std::string("\0a", 2)).lines, IsEmpty());
  EXPECT_THAT(Load("\xef\xbb\xbfx\n").lines, ElementsAre("\xef\xbb\xbfx"));
  // Half-width kana grow to three bytes each: only two thirds of them fit.
  const Loaded loaded = Load(std::string(30, '\xb1'), 1);
  EXPECT_EQ(loaded.lines.front().size(), 60U);
}

TEST_F(LyricsFile, WhatIsNoOrdinaryFileIsRefusedAndNothingChanges) {
  const std::string fifo = fFolder.File("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const std::string huge = fFolder.Write("huge", "x");
  std::filesystem::resize_file(huge, (1ULL << 30) + 1);
  for (const std::string& path : {fFolder.Path(), fFolder.File("missing"), fifo, huge, std::string("/dev/zero")}) {
    const Loaded loaded = load(path);
    EXPECT_FALSE(loaded.ok) << path;
    EXPECT_THAT(loaded.lines, ElementsAre("untouched")) << path;
    EXPECT_EQ(loaded.crType, 77);
  }
}

TEST(LinesToBytes, WritesTheLineEndsAndTheNul) {
  const Lines lines{"a", "b"};
  EXPECT_EQ(lines_to_bytes(lines, 1, 0), std::string("a\r\nb\r\n\0", 7));
  EXPECT_EQ(lines_to_bytes(lines, 1, 1), "a\r\nb\r\n");
  EXPECT_EQ(lines_to_bytes(lines, 2, 2), "a\rb\r");
  EXPECT_EQ(lines_to_bytes(lines, 7, 1), "ab");
  EXPECT_EQ(lines_to_bytes({}, 0, 0), std::string("\0", 1));
  EXPECT_EQ(lines_to_bytes({}, 0, 1), "");
  EXPECT_EQ(lines_to_bytes(lines, 0, 9), std::string("a\nb\n\0", 5)) << "an unknown encoding is written as it is";
}

TEST(LinesToBytes, NeverCutsTheTextThatGrowsMost) {
  std::string mixed;
  for (int i = 0; i < 300; ++i) mixed += "aｱ";
  const std::string bytes = lines_to_bytes({mixed}, 0, 2);
  EXPECT_EQ(bytes.size(), 300U * (1 + 3 + 1 + 3) + 1);
}

TEST_F(LyricsFile, EverySaveReadsBackInEveryForm) {
  const unsigned seed = 4711;
  std::mt19937 random(seed);
  const std::string pieces[] = {"a", "[00:01:23]", "日本", "ｱｲ", " ", "〜", "\\", "語"};
  for (int round = 0; round < 300; ++round) {
    Lines lines{"日本"}; // so that detection has something to go by
    for (unsigned i = random() % 6; i > 0; --i) {
      std::string line = "x";
      for (unsigned k = random() % 8; k > 0; --k) line += pieces[random() % std::size(pieces)];
      lines.push_back(line);
    }
    const long crType = static_cast<long>(random() % 3);
    const long encoding = static_cast<long>(random() % 3);
    if (encoding == 1) {
      for (std::string& line : lines) // Shift-JIS reads this code as the other of its pair
        for (size_t at = 0; (at = line.find("〜")) != std::string::npos;) line.replace(at, 3, "～");
    }
    const Loaded loaded = Load(lines_to_bytes(lines, crType, encoding));
    ASSERT_EQ(loaded.lines, lines) << "seed " << seed << " round " << round;
    ASSERT_EQ(loaded.crType, crType);
    ASSERT_EQ(loaded.encoding, encoding);
  }
}

TEST_F(LyricsFile, LrcBesideTheSongWinsOverTxt) {
  std::string song = fFolder.File("a.b.mp3");
  SonivoSongEntry entry;
  entry.filename = song.data();
  EXPECT_EQ(lyrics_fname(entry), fFolder.File("a.b.txt")) << "named although it is not there";
  fFolder.Write("a.b.txt", "x");
  fFolder.Write("a.b.lrc", "x");
  EXPECT_EQ(lyrics_fname(entry), fFolder.File("a.b.lrc"));
}
