#include "tools/vesmo_lrc/rewrite.h"

#include "tests/support/testing.h"
#include "tools/vesmo_lrc/diff.h"

using testing::HasSubstr;

namespace {

TOptions options_for(TCommand command) {
  TOptions options;
  options.command = command;
  return options;
}

TOptions shift_by(long ms) {
  TOptions options = options_for(TCommand::kShift);
  options.shiftMs = ms;
  return options;
}

std::string made(const std::string& bytes, const TOptions& options) {
  const TRewritten result = rewrite(TExactLyrics(bytes, options.readEncoding), options);
  return result.bytes.value_or("refused: " + result.refusal);
}

TOptions encode_to(TEncoding encoding) {
  TOptions options = options_for(TCommand::kEncode);
  options.toEncoding = encoding;
  return options;
}

} // namespace

TEST(Rewrite, ShiftKeepsTheFormatOfEachTag) {
  const std::pair<const char*, const char*> rows[] = {
      {"[00:01]a", "[00:02]a"},
      {"[00:01]\x93\xFA", "[00:02]\x93\xFA"},
      {"[00:01:50]a", "[00:02:73]a"},
      {"[00:01.50]a", "[00:02.73]a"},
      {"[00:01.505]a", "[00:02.735]a"},
      {"[00:01][00:05]a", "[00:02][00:06]a"},
      {"[00:01.00]a <00:02.00>b", "[00:02.23]a <00:03.23>b"},
      {"[01:23]45 words", "[01:24]45 words"},
      {"[ti:Title]", "[ti:Title]"},
      {"[Chorus]", "[Chorus]"},
      {"[00:01", "[00:01"},
  };
  for (const auto& [before, after] : rows) EXPECT_EQ(made(before, shift_by(1230)), after);
}

TEST(Rewrite, LikeTheEditorEveryLineWithABracketIsTagged) {
  TOptions options = shift_by(1000);
  options.likeEditor = true;
  EXPECT_EQ(made("[Chorus]x\n[00:01.50]a\n", options), "[00:01]x\n[00:02:50]a\n");
  EXPECT_EQ(rewrite(TExactLyrics("[Chorus]\n[00:01]\n", TEncoding::kUtf8), shift_by(1)).bracketsLeft, 1U);
}

TEST(Rewrite, ConvertAndStripTakeEveryTagOfALine) {
  TOptions convert = options_for(TCommand::kConvert);
  EXPECT_EQ(made("[00:01:50][00:05.20]a <00:06.00>b", convert), "[00:02][00:05]a <00:06.00>b");
  convert.toExtended = true;
  EXPECT_EQ(made("[00:01][00:05.20]a", convert), "[00:01:00][00:05:20]a");
  EXPECT_EQ(made("[00:01][00:05.20]a <00:06.00>b\n[ti:a]\n", options_for(TCommand::kStrip)), "a b\n[ti:a]\n");
}

TEST(Rewrite, DialectChangesOnlyWhatIsOfTheOther) {
  TOptions convert = options_for(TCommand::kConvert);
  convert.toDialect = TDialect::kCommon;
  const std::string family("[ti:a]\r\n[00:01]a [00:05:20]b<00:06.00>c\n[00:07.003]d\0", 53);
  EXPECT_EQ(made(family, convert), "[ti:a]\r\n[00:01.00]a <00:05.20>b<00:06.00>c\n[00:07.003]d");
  EXPECT_EQ(made(std::string("[00:01:00]\0x", 12), convert), std::string("[00:01.00]\0x", 12));
  convert.toDialect = TDialect::kFamily;
  EXPECT_EQ(made(family, convert), std::string("[ti:a]\r\n[00:01]a [00:05:20]b[00:06:00]c\n[00:07:00]d\0", 52));
  const std::pair<const char*, const char*> rows[] = {
      {"[00:01.00]", "common"}, {"[00:01]", "family"}, {"[00:01.00][00:01]", "mixed"}, {"<00:01.00>", "none"}};
  for (const auto& [text, dialect] : rows) EXPECT_STREQ(dialect_of(TExactLyrics(text, {})), dialect) << text;
}

TEST(Rewrite, EncodeConvertsTheTextAndDropsByteOrderMarkAndNul) {
  EXPECT_EQ(made(std::string("\xEF\xBB\xBF日\r\nb\n\0", 11), encode_to(TEncoding::kUtf8)), "日\r\nb\n");
  EXPECT_EQ(made("日\n", encode_to(TEncoding::kShiftJis)), "\x93\xfa\n");
  TOptions lineEnds = options_for(TCommand::kEncode);
  lineEnds.toLineEnd = TLineEnd::kCrLf;
  EXPECT_EQ(made("a\rb\nc", lineEnds), "a\r\nb\r\nc");
}

TEST(Rewrite, RefusesWhatWouldLoseSomething) {
  EXPECT_THAT(made("é\n日\nñé\n", encode_to(TEncoding::kShiftJis)),
              HasSubstr("Shift-JIS cannot hold line 1: é; line 3: ñ é"));
  EXPECT_THAT(made(std::string("a\0b", 3), encode_to(TEncoding::kUtf8)), HasSubstr("text after a NUL"));
  EXPECT_THAT(made(std::string("\xFF\xFEx\0", 4), shift_by(10)), HasSubstr("UTF-16"));
  TOptions asJis = shift_by(10);
  asJis.readEncoding = TEncoding::kJis;
  EXPECT_THAT(made("[00:01:00]日\n", asJis), HasSubstr("line 1 is not valid JIS"));
}

TEST(UnifiedDiff, ShowsChangedLinesWithWhatIsAroundThem) {
  std::list<std::string> old;
  for (int i = 1; i <= 12; ++i) old.push_back(std::to_string(i));
  std::list<std::string> changed = old;
  changed.front() = "one\x1b";
  changed.back() = "twelve";
  EXPECT_EQ(unified_diff("f", old, changed),
            "--- f\n+++ f\n@@ -1,4 +1,4 @@\n-1\n+one\\x1B\n 2\n 3\n 4\n@@ -9,4 +9,4 @@\n 9\n 10\n 11\n-12\n+twelve\n");
  EXPECT_EQ(unified_diff("f", old, old), "");
}
