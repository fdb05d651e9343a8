#include "tools/vesmo_lrc/check.h"

#include "tests/support/testing.h"
#include "tools/vesmo_lrc/report.h"

using namespace testing;

namespace {

/** Each finding as "line code". */
std::vector<std::string> findings(const std::string& bytes, const TOptions& options = {}) {
  std::vector<std::string> found;
  for (const TFinding& finding : check(TExactLyrics(bytes, options.readEncoding), options)) {
    found.push_back(std::to_string(finding.line) + " " + finding.code);
  }
  return found;
}

} // namespace

TEST(Check, FindsByteProblemsAndTagsThatPlayersReadDifferently) {
  EXPECT_THAT(findings("[00:01.00]a\n[00:01.00]b\n\nplain\n[00:03.00]日本\n"), IsEmpty());
  EXPECT_THAT(findings(""), IsEmpty());
  EXPECT_THAT(findings(std::string("\xEF\xBB\xBFx\r\ny\n\0", 9)),
              ElementsAre("0 byte-order-mark", "0 nul", "0 mixed-line-ends"));
  EXPECT_THAT(findings(std::string("a\r\0b", 4)), ElementsAre("0 nul", "0 text-behind-nul", "0 cr-line-ends"));
  EXPECT_THAT(findings("\x93\xfa\n\x81\n"), ElementsAre("0 encoding", "2 broken-text"));
  EXPECT_THAT(findings(std::string("\xFF\xFEx\0", 4)), ElementsAre("0 utf-16"));
  EXPECT_THAT(findings("x\n[00:01:00]a\n[00:02:00]b\n"), ElementsAre("2 colon-tags"));
  EXPECT_THAT(findings("[00:01.00]a\n[00:02:00]b\n[Chorus]\n"),
              ElementsAre("0 mixed-dialects", "2 colon-tags", "3 bracket"));
  EXPECT_THAT(findings("[ti:Title]\n[Chorus]\n[1:02]a\n[00:75]b\n[01:23]45\n[00:01][00:02]c\n"),
              ElementsAre("1 header", "2 bracket", "3 odd-tag", "4 odd-tag", "5 digit-behind-tag", "6 several-tags"));
}

TEST(Check, FindsTimesOutOfOrderAndPastTheEnd) {
  const std::string song = "[00:05.00]a\n[00:04.00]b\n[00:06.00]c\n";
  EXPECT_THAT(findings(song), ElementsAre("2 order"));
  EXPECT_THAT(findings("[00:01.00]a <00:02.00>b <00:01.50>c\n[00:02.00]a[00:03.00]\n"), ElementsAre("1 word-order"));
  TOptions options;
  options.songLengthMs = 5000;
  EXPECT_THAT(findings(song, options), ElementsAre("2 order", "3 past-end"));
  EXPECT_THAT(findings("[length:00:05]\n[00:06.00]c\n"), ElementsAre("1 header", "2 past-end"));
}

TEST(Check, FindsCharactersThatTheWantedEncodingCannotHold) {
  TOptions options;
  options.toEncoding = TEncoding::kShiftJis;
  EXPECT_THAT(findings("日本\né\n", options), ElementsAre("2 characters"));
}

TEST(Reports, HoldTogetherWhateverNamesAndTextsHold) {
  const std::vector<TFinding> odd = {{1, "code", "a\tb\"\\\x1b"}};
  EXPECT_EQ(check_report("f\n\xff", odd, TReportFormat::kTable), "f\\x0A\xff\t1\tcode\ta b\"\\\\x1B\n");
  EXPECT_EQ(check_report("f\n\xff", odd, TReportFormat::kJson),
            "{\"file\": \"f\\u000a\uFFFD\", \"findings\": [{\"line\": 1, \"code\": \"code\", \"message\": "
            "\"a\\u0009b\\\"\\\\\\u001b\"}]}");
}
