#include "lyrics/export.h"

#include "lyrics/tag_spans.h"

#include <gtest/gtest.h>

using Lines = std::list<std::string>;

namespace {

std::string exported(const Lines& lines, TExportFormat format) {
  const std::optional<TExported> made = export_lyrics(lines, format);
  return made ? made->bytes : "nothing";
}

const Lines kWords = {"[00:01:00]One [00:01:50]two[00:02:00]", "[00:03]three"};

} // namespace

TEST(Export, DottedFormKeepsEverythingButTheFormatOfTheTags) {
  const Lines lines = {"[ti:Title]",        "[00:01:23]colon", "[00:02]standard", "[00:03.45]dotted",
                       "[00:04][01:04]two", "plain",           "[Chorus]",        "[00:05]"};
  EXPECT_EQ(exported(lines, TExportFormat::kDotted),
            "[ti:Title]\n[00:01.23]colon\n[00:02.00]standard\n[00:03.45]dotted\n[00:04.00][01:04.00]two\nplain\n"
            "[Chorus]\n[00:05.00]\n");
  EXPECT_EQ(exported({"[01:23]45 words"}, TExportFormat::kDotted), "[01:23.00]45 words\n");
  EXPECT_EQ(exported(kWords, TExportFormat::kDotted), "[00:01.00]One two\n[00:03.00]three\n");
}

TEST(Export, EnhancedFormTimesTheWordsThatHaveTags) {
  EXPECT_EQ(exported(kWords, TExportFormat::kEnhanced),
            "[00:01.00]<00:01.00>One <00:01.50>two<00:02.00>\n[00:03.00]three\n");
  // Sung twice, the words move along.
  EXPECT_EQ(exported({"[00:01][00:11]a[00:02]b"}, TExportFormat::kEnhanced),
            "[00:01.00]<00:01.00>a<00:02.00>b\n[00:11.00]<00:11.00>a<00:12.00>b\n");
  EXPECT_EQ(exported({"[00:01]a[00:02] [00:03][00:04]b"}, TExportFormat::kEnhanced),
            "[00:01.00]<00:01.00>a<00:02.00> <00:03.00><00:04.00>b\n");
  const std::string already = "[00:01.00] <00:01.00>a <00:02.00>b\n";
  EXPECT_EQ(exported({already.substr(0, already.size() - 1)}, TExportFormat::kEnhanced), already);
}

TEST(Export, FormatThatTheLyricsHaveNotEnoughForGivesNothing) {
  EXPECT_EQ(exported({"[00:01]a"}, TExportFormat::kEnhanced), "nothing");
  for (const Lines& lines : {Lines{}, Lines{"a", "[Chorus]"}}) {
    EXPECT_EQ(exported(lines, TExportFormat::kDotted), "nothing");
    EXPECT_EQ(exported(lines, TExportFormat::kSubtitles), "nothing");
  }
}

TEST(Export, SubtitlesLastUntilTheNextTagOrTheirOwnEndAndObeyTheOffset) {
  EXPECT_EQ(exported(kWords, TExportFormat::kSubtitles), "1\n00:00:01,000 --> 00:00:02,000\nOne two\n\n"
                                                         "2\n00:00:03,000 --> 00:00:08,000\nthree\n\n");
  // A pause ends a line; lines of the same time and lines without a tag share a cue.
  const Lines lines = {"[00:10]b", "[00:10]c", " ", "more", "[00:12]", "[00:02][70:00:05]a"};
  EXPECT_EQ(exported(lines, TExportFormat::kSubtitles), "1\n00:00:02,000 --> 00:00:10,000\na\n\n"
                                                        "2\n00:00:10,000 --> 00:00:12,000\nb\nc\nmore\n\n"
                                                        "3\n01:10:00,050 --> 01:10:05,050\na\n\n");
  EXPECT_EQ(exported({"[00:10]a[00:12]", "[00:10]b[00:15]", "[00:30]c[00:50]"}, TExportFormat::kSubtitles),
            "1\n00:00:10,000 --> 00:00:15,000\na\nb\n\n2\n00:00:30,000 --> 00:00:50,000\nc\n\n");
  const auto made = export_lyrics({"[offset:500]", "early", "[00:01]a"}, TExportFormat::kSubtitles);
  ASSERT_TRUE(made.has_value());
  EXPECT_EQ(made->bytes, "1\n00:00:00,500 --> 00:00:05,500\na\n\n");
  EXPECT_EQ(made->linesLeftOut, 1);
}

TEST(Export, NamesContainTheFormat) {
  EXPECT_EQ(export_name("/a.b/song.lrc", TExportFormat::kDotted), "/a.b/song.dotted.lrc");
  EXPECT_EQ(export_name("song.lrc", TExportFormat::kSubtitles), "song.srt");
}

TEST(BracketKind, DistinguishesTagsFromWhatOnlyLooksLikeOne) {
  const std::pair<const char*, TBracketKind> rows[] = {
      {"[00:01]a", TBracketKind::kTimeTag},
      {"[00:01.234]a", TBracketKind::kTimeTag},
      {"[1:02]a", TBracketKind::kOddTag},
      {"[100:00]", TBracketKind::kOddTag},
      {"[00:01", TBracketKind::kOddTag},
      {"[ti:a]", TBracketKind::kHeader},
      {"[Chorus]", TBracketKind::kWord},
      {"[]", TBracketKind::kWord},
      {"[Chorus 2]", TBracketKind::kWord},
      {"[", TBracketKind::kWord},
      {"<00:01.00>a", TBracketKind::kNone},
      {" [00:01]", TBracketKind::kNone},
      {"", TBracketKind::kNone},
  };
  for (const auto& [line, kind] : rows) EXPECT_EQ(bracket_kind(line), kind) << line;
}
