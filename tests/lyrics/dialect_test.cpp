#include "lyrics/dialect.h"

#include "lyrics/document.h"
#include "tests/support/long_tests.h"
#include "tests/support/messages.h"

using namespace testing;

namespace {

using Lines = std::vector<std::string>;

const int kRounds = long_tests() ? 20000 : 1000;

struct Dialect : testing::Test {
  void Open(const std::string& bytes) {
    const entry_ref ref = ref_of(fFolder.Write("a.lrc", bytes));
    std::optional<TOpenedLyrics> opened = open_lyrics(ref, ref);
    ASSERT_TRUE(opened.has_value());
    fHasMixedTags = opened->hasMixedTags;
    fDocument.Open(*opened);
  }
  std::string Saved() const { return fDocument.Bytes(fDocument.Form()); }
  bool IsCommon() const { return fDocument.Form().dialect == TDialect::kCommon; }
  void Replay(TReplayDirection direction) { fDocument.Replay(direction, *fDocument.Next(direction)); }

  ScratchFolder fFolder;
  TDocument fDocument;
  bool fHasMixedTags = false;
};

} // namespace

TEST_F(Dialect, FileIsCommonOnlyWithItsOwnTagsAndIsSavedAsItWas) {
  struct {
    std::string bytes;
    bool isCommon;
    Lines lines;
  } const rows[] = {
      {"[ti:x]\n[00:01.20]a\n\n[99:59.99]b\n", true, {"[ti:x]", "[00:01:20]a", "", "[99:59:99]b"}},
      {"[offset:+250]\r\n[00:01.234]a\r\n", true, {"[offset:+250]", "[00:01:23]a"}},
      {"[00:01.20][01:02.03]a<00:01.50>b", true, {"[00:01:20][01:02:03]a<00:01.50>b"}},
      {"\xEF\xBB\xBF[00:01.20]a [00:02.30]b\n", true, {"[00:01:20]a [00:02:30]b"}},
      {"[00:01.20]a\n[12:02.5]b\n[ 1:3.456 ]c\n[100:00.00]\n[x1:02.50]\n[00:.50]",
       true,
       {"[00:01:20]a", "[12:02:50]b", "[01:03:45]c", "[100:00.00]", "[x1:02.50]", "[00:.50]"}},
      {"[00:01.20]\x93\xFA\r\n[00:01.209]b", true, {"[00:01:20]日", "[00:01:20]b"}},
      {"[00:01:20]a\n", false, {"[00:01:20]a"}},
      {"<00:01.20>a\n", false, {"<00:01.20>a"}},
      {"[0:02.5]only odd\n", true, {"[00:02:50]only odd"}},
      {"text [0:02.5] in a line\n", false, {"text [0:02.5] in a line"}},
      {"[0:02.5]odd\n[00:01]a\n", false, {"[0:02.5]odd", "[00:01]a"}},
  };
  for (const auto& [bytes, isCommon, lines] : rows) {
    Open(bytes);
    EXPECT_EQ(IsCommon(), isCommon) << bytes;
    EXPECT_EQ(fDocument.Lines(), lines);
    EXPECT_EQ(Saved(), isCommon ? bytes : bytes + '\0');
    EXPECT_FALSE(fHasMixedTags);
  }
}

TEST_F(Dialect, ChangedTagIsWrittenWithHundredthsAndEveryOtherAsBefore) {
  using Rows = std::vector<std::pair<TLinesChange, const char*>>;
  const Rows uniqueTags = {
      {{1, 1, {"[00:05:00]b"}}, "[00:01.201]a\n[00:05.00]b\n[0:03.5]c\n[00:04.00]d"},
      {{1, 1, {"[00:02:22]new text"}}, "[00:01.201]a\n[00:02.222]new text\n[0:03.5]c\n[00:04.00]d"},
      {{1, 1, {"b"}}, "[00:01.201]a\nb\n[0:03.5]c\n[00:04.00]d"},
      {{1, 1, {"[00:05]b"}}, "[00:01.201]a\n[00:05.00]b\n[0:03.5]c\n[00:04.00]d"},
      {{0, 0, {"", "[00:03:50]stamped"}}, "\n[00:03.50]stamped\n[00:01.201]a\n[00:02.222]b\n[0:03.5]c\n[00:04.00]d"},
      {{0, 2, {"[00:02:22]b", "[00:01:20]a"}}, "[00:02.222]b\n[00:01.201]a\n[0:03.5]c\n[00:04.00]d"},
      {{0, 3, {"[00:01:21]a", "[00:02:23]b", "[00:03:51]c"}}, "[00:01.21]a\n[00:02.23]b\n[00:03.51]c\n[00:04.00]d"},
      {{0, 3, {"[00:03:50]new text"}}, "[0:03.5]new text\n[00:04.00]d"},
      {{4, 0, {""}}, "[00:01.201]a\n[00:02.222]b\n[0:03.5]c\n[00:04.00]d\n\n"},
      {{1, 1, {"[00:02:22]new", "[00:02:22]more"}},
       "[00:01.201]a\n[00:02.222]new\n[00:02.22]more\n[0:03.5]c\n[00:04.00]d"},
      {{0, 3, {"new", "[00:01:20]a", "[00:02:22]changed"}}, "new\n[00:01.201]a\n[00:02.222]changed\n[00:04.00]d"},
  };
  const Rows equalTags = {
      {{0, 0, {"[00:01:20]x"}}, "[00:01.201]x\n[00:01.202]x\n[00:01.20]x\n[00:01.20]y\n[00:02.223][00:04.555]a"},
      {{0, 4, {"[00:04:55]a"}}, "[00:04.555]a"},
  };
  for (const auto& [bytes, rows] :
       {std::pair("[00:01.201]a\n[00:02.222]b\n[0:03.5]c\n[00:04.00]d", uniqueTags),
        std::pair("[00:01.201]x\n[00:01.202]x\n[00:01.20]y\n[00:02.223][00:04.555]a", equalTags)}) {
    Open(bytes);
    for (const auto& [change, saved] : rows) {
      ASSERT_TRUE(fDocument.Change(change, TEditKind::kOther, 0, 0, 0));
      EXPECT_EQ(Saved(), saved);
      fDocument.Saved(fDocument.PlanSave(fDocument.File(), fDocument.Form(), {}), {});
      Replay(TReplayDirection::kUndo);
      EXPECT_EQ(Saved(), bytes) << "also after a save";
    }
  }
}

/** The lines that were not touched have unique texts, so that each can be followed. */
TEST_F(Dialect, WhateverIsEditedEveryUntouchedLineKeepsItsBytes) {
  static const char* const kTags[] = {"[00:0%.2%]", "[00:0%.2%%]", "[0:0%.2]", "[ 00:0%.20]", "[00:01.20]",
                                      "",           "[ar:x]"};
  std::mt19937 random(5); // NOLINT: the same files in every run
  const auto below = [&random](size_t bound) { return random() % bound; };
  const auto random_tag = [&] {
    std::string tag = kTags[below(std::size(kTags))];
    for (char& c : tag) c = c == '%' ? static_cast<char>('0' + below(10)) : c;
    return tag;
  };
  for (int round = 0; round < kRounds; ++round) {
    Lines file{"[00:00.00]"};
    for (size_t i = below(12); i > 0; --i) file.push_back(random_tag() + random_tag() + "line " + std::to_string(i));
    std::list<std::string> shown(file.begin(), file.end());
    ASSERT_TRUE(tags_used_in(shown).IsCommon());
    const TCommonSource source = show_as_family(&shown);
    Lines lines(shown.begin(), shown.end());
    Lines expected = file; // empty for a touched line
    ASSERT_EQ(written_as_common(lines, source), file);
    for (size_t edits = below(4); edits > 0; --edits) {
      const auto at = static_cast<std::ptrdiff_t>(below(lines.size()));
      if (const size_t kind = below(3); kind == 0) {
        lines.insert(lines.begin() + at, "[00:01:2" + std::to_string(below(10)) + "]new");
        expected.insert(expected.begin() + at, "");
      } else if (kind == 1 && lines.size() > 1) {
        lines.erase(lines.begin() + at);
        expected.erase(expected.begin() + at);
      } else {
        lines[static_cast<size_t>(at)] += " changed";
        expected[static_cast<size_t>(at)].clear();
      }
    }
    const Lines written = written_as_common(lines, source);
    ASSERT_EQ(written.size(), lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
      ASSERT_EQ(written[i], expected[i].empty() ? written[i] : expected[i]) << "round " << round;
      std::list<std::string> again{written[i]};
      show_as_family(&again);
      ASSERT_EQ(again.front(), lines[i]) << "round " << round;
    }
  }
}

TEST_F(Dialect, MixedFileIsShownAsItIsUntilItsTagsAreMadeOneInAStep) {
  const std::string bytes = "[00:01.204]a\n[00:02:30]b\n";
  Open(bytes);
  EXPECT_TRUE(fHasMixedTags);
  EXPECT_FALSE(IsCommon());
  EXPECT_EQ(Saved(), bytes + '\0');
  fDocument.Unify(TDialect::kCommon, 0, 0);
  EXPECT_THAT(fDocument.Lines(), ElementsAre("[00:01:20]a", "[00:02:30]b"));
  EXPECT_EQ(Saved(), "[00:01.204]a\n[00:02.30]b\n");
  Replay(TReplayDirection::kUndo);
  EXPECT_EQ(Saved(), bytes + '\0');
  Replay(TReplayDirection::kRedo);
  EXPECT_EQ(Saved(), "[00:01.204]a\n[00:02.30]b\n");
}

TEST_F(Dialect, SavedInTheOtherDialectAndBackALineIsAsItWas) {
  const std::string bytes = "\xEF\xBB\xBF[00:01.234]a\r\n[00:02.30]b";
  Open(bytes);
  const TLyricsForm common = fDocument.Form();
  TLyricsForm family = common;
  family.dialect = TDialect::kFamily;
  EXPECT_EQ(fDocument.Bytes(family), std::string("[00:01:23]a\r\n[00:02:30]b\r\n\0", 27));
  fDocument.Saved(fDocument.PlanSave(fDocument.File(), family, {}), {});
  EXPECT_EQ(fDocument.Bytes(common), bytes);
  EXPECT_EQ(fDocument.Bytes({TEncoding::kShiftJis, TLineEnd::kLf, TDialect::kCommon}), "[00:01.234]a\n[00:02.30]b");
  fDocument.Unify(TDialect::kCommon, 0, 0);
  EXPECT_TRUE(Saved().starts_with("\xEF\xBB\xBF[00:01.23")) << "the byte-order mark stays";
  EXPECT_TRUE(has_thousandths({"[00:01.20]a", "[00:01.234]b"}));
  EXPECT_FALSE(has_thousandths({"[00:01.230]a"})) << "nothing is cut";
  fDocument.StartNew(common);
  EXPECT_EQ(Saved(), "\r\n") << "nothing of the file before";
}
