#include "platform/support/text_encoding.h"

#include "tests/support/testing.h"

namespace {

using Convert = decltype(convert_to_utf8);

std::string converted(Convert& convert, uint32 encoding, const std::string& text, size_t room) {
  std::string out(room, '?');
  size_t taken = text.size();
  EXPECT_EQ(convert(encoding, text.data(), &taken, out.data(), &room, 0x1A), B_OK);
  return out.substr(0, room);
}
std::string to_utf8(uint32 encoding, const std::string& text, size_t room = 4096) {
  return converted(convert_to_utf8, encoding, text, room);
}
std::string from_utf8(uint32 encoding, const std::string& text, size_t room = 4096) {
  return converted(convert_from_utf8, encoding, text, room);
}

constexpr auto kSjis = B_SJIS_CONVERSION;
constexpr auto kJis = B_JIS_CONVERSION;

} // namespace

TEST(ShiftJis, IsCodePage932) {
  EXPECT_EQ(to_utf8(kSjis, "a\\~\x93\xfa\x96\x7b"), "a\\~日本");
  EXPECT_EQ(to_utf8(kSjis, "\xb1\xb2\xb3"), "ｱｲｳ");
  EXPECT_EQ(to_utf8(kSjis, "\x87\x40\xfa\x40"), "①ⅰ") << "the vendors' extensions";
  EXPECT_EQ(to_utf8(kSjis, "\x81\x60"), "～");
  EXPECT_EQ(from_utf8(kSjis, "日本ｱ①"), "\x93\xfa\x96\x7b\xb1\x87\x40");
}

TEST(ShiftJis, WritesBothCharactersThatShareACodeButNoYenSignAsABackslash) {
  EXPECT_EQ(from_utf8(kSjis, "〜～"), "\x81\x60\x81\x60");
  EXPECT_EQ(from_utf8(kSjis, "‖∥−－¢￠£￡¬￢"), from_utf8(kSjis, "∥∥－－￠￠￡￡￢￢"));
  EXPECT_EQ(from_utf8(kSjis, "—―"), "\x81\x5c\x81\x5c");
  EXPECT_EQ(from_utf8(kSjis, "x¥ ‾\\~"), "x\x1a \x1a\\~");
}

TEST(ShiftJis, GivesOneSubstituteForAMalformedPairAndKeepsTheLineEnd) {
  EXPECT_EQ(to_utf8(kSjis, "\x93\nx"), "\x1a\nx");
  EXPECT_EQ(to_utf8(kSjis, "\x93"), "\x1a");
  EXPECT_EQ(to_utf8(kSjis, "\xfdx"), "\x1ax");
  EXPECT_EQ(from_utf8(kSjis, "x한y😀z"), "x\x1ay\x1az");
  EXPECT_EQ(from_utf8(kSjis, "a\xff\xe3\x81z"), "a\x1a\x1az");
}

TEST(Jis, ReadsEveryEscapeAndSkipsWhatItCannotRead) {
  EXPECT_EQ(to_utf8(kJis, "a\x1b$BF|K\\\x1b(Bb"), "a日本b");
  EXPECT_EQ(to_utf8(kJis, "\x1b$@F|K\\\x1b(J\\~a\x1b(B\\"), "日本¥‾a\\");
  EXPECT_EQ(to_utf8(kJis, "\x1b(I123\x1b(B"), "ｱｲｳ");
  EXPECT_EQ(to_utf8(kJis, "\x1b$B!A\x1b(B"), "〜");
  EXPECT_EQ(to_utf8(kJis, "x\x80y"), "x\x1ay");
  EXPECT_EQ(to_utf8(kJis, "\x1bxy"), "\x1axy");
  EXPECT_EQ(to_utf8(kJis, "\x1b$BF"), "\x1a");
}

TEST(Jis, AYenSignAndAnOverlineSurviveARoundTrip) {
  for (const std::string text : {"a\x1b(J\\~\x1b(B100\\~", "\x1b$BF|\x1b(J~\x1b(I1\x1b(J\\\x1b(B\n\x1b(J\\\x1b(B"})
    EXPECT_EQ(from_utf8(kJis, to_utf8(kJis, text)), text);
  EXPECT_EQ(from_utf8(kJis, "日¥"), "\x1b$BF|\x1b(J\\\x1b(B");
  EXPECT_EQ(from_utf8(kJis, "—―"), "\x1b$B!=!=\x1b(B");
}

TEST(Jis, ReturnsToAsciiAtALineEndAndAtTheEnd) {
  EXPECT_EQ(from_utf8(kJis, "日\n本"), "\x1b$BF|\x1b(B\n\x1b$BK\\\x1b(B");
  EXPECT_EQ(from_utf8(kJis, "ｱa"), "\x1b(I1\x1b(Ba");
  EXPECT_EQ(from_utf8(kJis, "日한"), "\x1b$BF|\x1b(B\x1a") << "the substitute is ASCII";
  EXPECT_EQ(to_utf8(kJis, "\x1b$BF|\nab"), "日\nab") << "a text without the return";
}

TEST(TextEncoding, StopsBetweenCharactersWhenTheRoomEnds) {
  EXPECT_EQ(to_utf8(kSjis, "\x93\xfa\x96\x7b", 5), "日");
  EXPECT_EQ(from_utf8(kSjis, "日本", 3), "\x93\xfa");
  // Seven bytes hold one character with both its escapes, or nothing.
  EXPECT_EQ(from_utf8(kJis, "日本", 9), "\x1b$BF|\x1b(B");
  EXPECT_EQ(from_utf8(kJis, "日本", 7), "");
}

TEST(TextEncoding, RefusesAnUnknownEncoding) {
  char out = 'x';
  size_t taken = 1;
  size_t made = 1;
  EXPECT_EQ(convert_to_utf8(0, "a", &taken, &out, &made), B_BAD_VALUE);
  EXPECT_EQ(convert_from_utf8(B_UNICODE_CONVERSION, "a", &taken, &out, &made), B_BAD_VALUE);
  EXPECT_EQ(out, 'x');
}
