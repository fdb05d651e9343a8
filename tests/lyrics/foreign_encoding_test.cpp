#include "lyrics/foreign_encoding.h"

#include "lyrics/document.h"
#include "lyrics/exact_lyrics.h"
#include "lyrics/lyrics_file.h"
#include "tests/support/messages.h"

using namespace testing;
using namespace std::string_literals;

namespace {

TEncoding named(std::string_view name) {
  for (const TForeignEncoding& foreign : foreign_encodings())
    if (foreign.name == name) return foreign.encoding;
  ADD_FAILURE() << name;
  return TEncoding::kUtf8;
}

} // namespace

TEST(ForeignEncoding, FileIsSavedAsItWasOrTheLossIsKnown) {
  struct {
    const char* name;
    std::string bytes;
    const char* line;
    bool hasLoss;
  } const rows[] = {
      {"GB18030", "\xB8\xE8\xB4\xCA\r\n", "歌词", false},
      {"Big5", "\xBA\x71\xB5\xFC\n", "歌詞", false},
      {"EUC-JP", "\xB2\xCE\n", "歌", false},
      {"EUC-KR", "\xB3\xEB\xB7\xA1\n", "노래", false},
      {"Windows-1252", "na\xEFve\n", "naïve", false},
      {"Windows-1252", "[00:01.20]na\xEFve", "[00:01:20]naïve", false},
      {"Windows-1258", "a\n", "a", false},
      {"UTF-16LE", "\xFF\xFE\x4C\x6B\n\0"s, "歌", false},
      {"UTF-16BE", "\x6B\x4C\0\r\0\n"s, "歌", false},
      {"GB18030", "\xB8\xE8\xFF\n", "歌\x1A", true},
      {"UTF-16LE", "a\0\n\0b"s, "a", true},
      {"UTF-16LE", "a\0\n\0\0\0b\0"s, "a", true},
  };
  const ScratchFolder folder;
  for (const auto& [name, bytes, line, hasLoss] : rows) {
    const entry_ref ref = ref_of(folder.Write("a.lrc", bytes));
    const auto opened = open_lyrics(ref, ref, {true, named(name)});
    ASSERT_TRUE(opened.has_value()) << name;
    EXPECT_EQ(opened->lines.front(), line) << name;
    EXPECT_EQ(opened->losses.Any(), hasLoss) << name;
    EXPECT_EQ(opened->losses.hasBrokenBytes, hasLoss && opened->losses.tailBytes == 0) << name;
    TDocument document;
    document.Open(*opened);
    EXPECT_EQ(document.Bytes(document.Form()) == bytes, !hasLoss) << name;
  }
}

TEST(ForeignEncoding, CharactersThatItLacksAreNamed) {
  EXPECT_THAT(characters_outside("歌 é", named("Windows-1252")), ElementsAre("歌"));
  EXPECT_THAT(characters_outside("\u1A1A \u011A", named("UTF-16LE")), IsEmpty());
  EXPECT_EQ(foreign_from_utf8("a歌b", named("Windows-1252")), "a\x1A"
                                                              "b");
}

TEST(ForeignEncoding, IsGuessedForAnOffer) {
  std::string chinese;
  for (int i = 0; i < 20; ++i) chinese += "[00:01.20]\xCE\xD2\xB5\xC4\xD0\xC4\xCC\xAB\xC2\xD2\n";
  EXPECT_EQ(probable_foreign_encoding(chinese), named("GB18030"));
  EXPECT_EQ(probable_foreign_encoding("\xFF\xFE\x4C\x6B"), named("UTF-16LE"));
  EXPECT_EQ(probable_foreign_encoding("plain"), std::nullopt);
}
