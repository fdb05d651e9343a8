#include "lyrics/exact_lyrics.h"

#include "tests/support/testing.h"

using namespace testing;
using enum TEncoding;

namespace {
constexpr std::nullopt_t kDetect = std::nullopt;
} // namespace

TEST(ExactLyrics, UnchangedFilesComeBackByteForByte) {
  const std::string files[] = {
      "",
      "a",
      "a\r\nb\rc\n\nd",
      "\xEF\xBB\xBF[00:01]a\n",
      std::string("a\n\0\0b", 6),
      "\x93\xfa\x96\x7b\r\n\xED\x40\n", // a doubled vendor code, which would be written as another
      "\x1b$@F|K\\\x1b(J\n"};
  for (const std::string& bytes : files) {
    const TExactLyrics lyrics(bytes, kDetect);
    EXPECT_EQ(lyrics.WithLines(lyrics.Lines()), bytes) << testing::PrintToString(bytes);
  }
}

TEST(ExactLyrics, EveryKindOfLineEndEndsALine) {
  const TExactLyrics lyrics("a\r\nb\rc\nd", kDetect);
  EXPECT_THAT(lyrics.Lines(), ElementsAre("a", "b", "c", "d"));
  EXPECT_EQ(lyrics.InEncoding(kUtf8, "\n"), "a\nb\nc\nd") << "no line end where there was none";
}

TEST(ExactLyrics, ConvertedTextIsNeverCut) {
  const TExactLyrics lyrics(std::string(30, '\xb1') + "\n", kDetect);
  EXPECT_EQ(lyrics.Lines().front().size(), 90U);
  EXPECT_EQ(lyrics.InEncoding(kShiftJis, {}), lyrics.Bytes());
}

TEST(ExactLyrics, ChangedLinesAreWrittenInTheFilesOwnForm) {
  const TExactLyrics lyrics("\x93\xfa\r\nb", kDetect);
  EXPECT_EQ(lyrics.WithLines({"本", "b"}), "\x96\x7b\r\nb");
  EXPECT_EQ(lyrics.WithLines({"é", "b"}), std::nullopt);
}

TEST(ExactLyrics, BrokenLinesAreFound) {
  EXPECT_THAT(TExactLyrics("a\n\x81\n", kShiftJis).BrokenLines(), ElementsAre(1U));
  EXPECT_THAT(TExactLyrics("a\n\xE3\x81\n", kUtf8).BrokenLines(), ElementsAre(1U));
  EXPECT_THAT(TExactLyrics("\x1A\n日\n", kUtf8).BrokenLines(), IsEmpty());
}

TEST(CharactersOutside, AreNamedOnce) {
  EXPECT_THAT(characters_outside("é日é\xE3한", kShiftJis), ElementsAre("é", "\\xE3", "한"));
  EXPECT_THAT(characters_outside("¥100 ‾ 日本", kShiftJis), ElementsAre("¥", "‾"));
  EXPECT_THAT(characters_outside("日本 ｱ～ ¥ ‾", kJis), IsEmpty());
  EXPECT_THAT(characters_outside("\x1B(I1", kJis), ElementsAre("\x1B")) << "would be read as kana";
  EXPECT_THAT(characters_outside("\x1B(I1", kShiftJis), IsEmpty());
}
