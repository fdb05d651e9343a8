#include "companion/wrap_text.h"

#include "tests/support/testing.h"

using testing::ElementsAre;

namespace {

/** Width 1 for each character. */
float count_of(std::string_view text) {
  float count = 0;
  for (const char byte : text) count += (static_cast<unsigned char>(byte) & 0xC0) == 0x80 ? 0 : 1;
  return count;
}

std::vector<std::string> wrapped(const std::string& text, float width) {
  return wrap_text(text, width, count_of);
}

} // namespace

TEST(WrapText, BreaksAtBlanksAndJapaneseAnywhereExceptBeforeForbiddenCharacters) {
  EXPECT_THAT(wrapped("", 5), ElementsAre(""));
  EXPECT_THAT(wrapped("who has seen the wind", 21), ElementsAre("who has seen the wind"));
  EXPECT_THAT(wrapped("who has seen  the wind", 8), ElementsAre("who has", "seen", "the wind"));
  EXPECT_THAT(wrapped("who has ", 7), ElementsAre("who has"));
  EXPECT_THAT(wrapped("unbreakable so", 5), ElementsAre("unbre", "akabl", "e so")) << "a word that is too wide";
  EXPECT_THAT(wrapped("ab", 0), ElementsAre("a", "b")) << "one character at least";
  EXPECT_THAT(wrapped("誰が風を見たでしょう", 4), ElementsAre("誰が風を", "見たで", "しょう"));
  EXPECT_THAT(wrapped("木の葉、「風」は", 3), ElementsAre("木の", "葉、", "「風」", "は"));
  EXPECT_THAT(wrapped("夢　see the 風", 5), ElementsAre("夢　see", "the 風"));
}

TEST(WrapText, InvalidUtf8IsKept) {
  std::string joined;
  for (const std::string& row : wrapped("\xff\x80\x80\xe3\x81", 1)) joined += row;
  EXPECT_EQ(joined, "\xff\x80\x80\xe3\x81");
}
