#include "tools/vesmo_lrc/command_line.h"

#include "tests/support/testing.h"

using namespace testing;

namespace {

TParsedLine parse(std::vector<std::string> words) {
  words.insert(words.begin(), "vesmo-lrc");
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return parse_command_line(static_cast<int>(words.size()), pointers.data());
}

} // namespace

TEST(CommandLine, OptionsStandAnywhereUntilTwoDashes) {
  const TParsedLine line = parse({"-n", "shift", "a", "--by", "-250", "-q", "--", "-b", "--by"});
  ASSERT_TRUE(line.options.has_value()) << line.text;
  EXPECT_THAT(line.options->paths, ElementsAre("a", "-b", "--by"));
  EXPECT_EQ(line.options->shiftMs, -250);
  EXPECT_TRUE(line.options->isDryRun && line.options->isQuiet);
}

TEST(CommandLine, AmountsMayHaveUnitsAndAreBounded) {
  const std::pair<const char*, long> rows[] = {
      {"+1500", 1500}, {"-1.5s", -1500}, {"20ms", 20}, {"99999999999999", 2147483647}, {"-1e30s", -2147483647}};
  for (const auto& [text, ms] : rows) {
    const TParsedLine line = parse({"shift", std::string("--by=") + text, "-"});
    ASSERT_TRUE(line.options.has_value()) << line.text;
    EXPECT_EQ(line.options->shiftMs, ms) << text;
  }
}

TEST(CommandLine, ValuesArriveInTheOptions) {
  const auto options = [](std::vector<std::string> words) {
    words.push_back("a");
    return parse(std::move(words)).options.value_or(TOptions());
  };
  EXPECT_EQ(options({"convert", "--dialect", "common"}).toDialect, TDialect::kCommon);
  EXPECT_TRUE(options({"convert", "--to", "ext"}).toExtended);
  EXPECT_EQ(options({"encode", "--to", "sjis"}).toEncoding, TEncoding::kShiftJis);
  EXPECT_EQ(options({"encode", "--eol", "crlf"}).toLineEnd, TLineEnd::kCrLf);
  EXPECT_EQ(options({"export", "--to", "srt"}).exportFormat, TExportFormat::kSubtitles);
  EXPECT_EQ(options({"info", "--format", "json"}).reportFormat, TReportFormat::kJson);
  EXPECT_EQ(options({"info", "--from", "jis"}).readEncoding, TEncoding::kJis);
  EXPECT_THAT(options({"info", "--from", "auto"}).paths, ElementsAre("a"));
  EXPECT_EQ(options({"embed", "--lyrics", "b"}).lyrics, "b");
}

TEST(CommandLine, WhatMakesNoSenseIsSaid) {
  const std::pair<std::vector<std::string>, const char*> rows[] = {
      {{}, "missing command"},
      {{"sing", "a"}, "unknown command 'sing'"},
      {{"info"}, "at least one file"},
      {{"info", "-", "-"}, "only once"},
      {{"info", "--by", "5", "a"}, "info does not take --by"},
      {{"shift", "a"}, "needs --by"},
      {{"shift", "--by", "soon", "a"}, "not 'soon'"},
      {{"shift", "--by", "0.5", "a"}, "not '0.5'"},
      {{"shift", "--by", "nan", "a"}, "not 'nan'"},
      {{"shift", "--by"}, "'--by' needs a value"},
      {{"convert", "--to", "dotted", "a"}, "one of std, ext"},
      {{"convert", "--to", "std", "--dialect", "family", "a"}, "either --to or --dialect"},
      {{"convert", "--dialect", "common", "--like-editor", "a"}, "without --like-editor"},
      {{"encode", "a"}, "--to, --eol or both"},
      {{"encode", "--eol", "nl", "a"}, "one of lf, crlf, cr"},
      {{"check", "--length", "long", "a"}, "not 'long'"},
      {{"info", "-j", "0", "a"}, "--jobs takes"},
      {{"embed", "--lyrics", "", "a"}, "--lyrics needs a path"},
      {{"info", "--what", "a"}, "unknown or ambiguous option '--what'"},
  };
  for (const auto& [words, said] : rows) {
    const TParsedLine line = parse(words);
    EXPECT_FALSE(line.options.has_value()) << said;
    EXPECT_THAT(line.text, HasSubstr(said));
    EXPECT_EQ(line.exitCode, kExitUsage);
  }
  EXPECT_EQ(parse({"--help"}).exitCode, kExitFine);
  EXPECT_THAT(parse({"--version"}).text, HasSubstr("3.26"));
}
