#include "lyrics/word_stamper.h"

#include "lyrics/edit_history.h"
#include "lyrics/word_lines.h"
#include "lyrics/word_units.h"
#include "tests/support/testing.h"

namespace {

constexpr TStampForms kFamily;
constexpr TStampForms kCommon{TTagForm::kExtended, TWordForm::kCommon};

/** The line after taps at these times; a negative one ends the line. */
std::string tapped(const std::string& line, const std::vector<long>& timesMs, const TStampForms& forms = kFamily) {
  TWordStamper stamper;
  stamper.Start(line);
  for (const long time : timesMs) {
    if (time < 0)
      stamper.EndLine(-time, forms);
    else
      stamper.Tap(time, forms);
  }
  return stamper.Line().Line();
}

std::vector<long> times_of(const std::string& line) {
  const TTimedLine timed(line);
  std::vector<long> times;
  for (size_t unit = 0; unit < timed.CountUnits(); ++unit)
    if (const auto time = timed.TimeOf(unit)) times.push_back(*time);
  if (const auto end = timed.EndMs()) times.push_back(*end);
  return times;
}

} // namespace

TEST(WordStamper, TapsTimeTheUnitsOfALine) {
  const struct {
    const char* line;
    std::vector<long> times;
    const char* family;
    const char* common = nullptr; // the same
  } rows[] = {
      {"Hold on now",
       {1000, 1500, 2340},
       "[00:01:00]Hold [00:01:50]on [00:02:34]now",
       "[00:01:00]Hold <00:01.50>on <00:02.34>now"},
      {"Hold on",
       {1000, 1500, -2000},
       "[00:01:00]Hold [00:01:50]on[00:02:00]",
       "[00:01:00]Hold <00:01.50>on<00:02.00>"},
      {"夜に", {1000, 1009}, "[00:01:00]夜[00:01:00]に", "[00:01:00]夜<00:01.00>に"},
      // A second pass changes what is tapped, and removes only what would be before it.
      {"[00:01:00]a <00:02.00>b <00:03.00>c", {1500}, "[00:01:50]a <00:02.00>b <00:03.00>c"},
      {"[00:01:00]a [00:02.000]b [00:03:00]c", {1100, 3500}, "[00:01:10]a [00:03:50]b c"},
      {"a b", {5000, 1000}, "[00:05:00]a [00:05:00]b", "[00:05:00]a <00:05.00>b"},
      // Tags of other programs: at the first word, at the end of a word, within one.
      {"[00:01.00]<00:01.00>a <00:02.00>b", {1200}, "[00:01:20]<00:01.20>a <00:02.00>b"},
      {"[00:01:00]a<00:01.50> <00:02.00>b", {1100, 2100}, "[00:01:10]a<00:01.50> <00:02.10>b"},
      {"hel<00:02.00>lo you", {1000, 1500, 1700}, "[00:01:00]hel<00:01.50>lo <00:01.70>you"},
      {"  ", {1000}, "[00:01:00]  "},
      {"[Chorus]la", {1000}, "[00:01:00]la"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(tapped(row.line, row.times), row.family);
    EXPECT_EQ(tapped(row.line, row.times, kCommon), row.common ? row.common : row.family);
  }
  EXPECT_EQ(tapped("[00:01]a b", {2900, 3100}, {TTagForm::kStandard, TWordForm::kFamily}), "[00:02]a [00:03:10]b");
}

TEST(WordStamper, TakeBackJoinAndSplitChangeOneUnit) {
  TWordStamper stamper;
  stamper.Start("[00:01:00]New [00:02:00]York [00:03:00]sleeps[00:04:00]");
  EXPECT_EQ(stamper.Line().CountTimed(), 3U);
  stamper.MoveToEnd();
  EXPECT_TRUE(stamper.TakeBack());
  EXPECT_EQ(stamper.Line().Line(), "[00:01:00]New [00:02:00]York sleeps");
  EXPECT_EQ(stamper.NextUnit(), 2U);
  EXPECT_TRUE(stamper.TakeBack());
  EXPECT_FALSE(stamper.TakeBack()) << "the line's own tag is not a word's";
  stamper.Start("New York sleeps");
  EXPECT_TRUE(stamper.Join());
  EXPECT_EQ(stamper.Line().Line(), "New \u2060York sleeps");
  EXPECT_EQ(TTimedLine(stamper.Line().Line()).CountUnits(), 2U) << "kept with the text";
  for (int i = 0; i < 6; ++i) stamper.MoveCaret(true); // behind the "o": the mark has no width
  EXPECT_TRUE(stamper.Split());
  EXPECT_EQ(stamper.Line().Line(), "New \u2060Yo\u200brk sleeps");
  EXPECT_EQ(stamper.NextUnit(), 1U);
  stamper.MoveCaret(false);
  EXPECT_TRUE(stamper.Join());
  EXPECT_EQ(stamper.Line().Line(), "New \u2060York sleeps") << "the cut is undone";
  EXPECT_FALSE(stamper.Split()) << "the caret is at the start of the joined words";
  for (int i = 0; i < 4; ++i) stamper.MoveCaret(true);
  EXPECT_TRUE(stamper.Split());
  EXPECT_EQ(stamper.Line().Line(), "New York sleeps") << "so is the joining";
  stamper.Start("a");
  EXPECT_FALSE(stamper.Join());
  EXPECT_FALSE(stamper.Split());
}

TEST(WordStamper, AThousandRandomSequencesKeepTextAndOrderAndAreUndone) {
  SeededRandom random;
  const auto below = [&random](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
  const char* const lines[] = {"Hold on, don't let go",
                               "きっと、コーヒー 「夜」",
                               "  [x] (a) - b  ",
                               "사랑해 정말",
                               "[00:01.00]<00:01.00>one<00:01.50> <00:02.00>t<00:02.500>wo three<00:04.00>",
                               ""};
  for (int round = 0; round < 1000; ++round) {
    const std::string line = lines[below(std::size(lines))];
    const TStampForms forms{below(2) ? TTagForm::kExtended : TTagForm::kStandard,
                            below(2) ? TWordForm::kFamily : TWordForm::kCommon};
    TEditHistory history;
    history.Reset({line});
    TWordStamper stamper;
    stamper.Start(line);
    long timeMs = 0;
    for (int step = 0; step < 25; ++step) {
      timeMs = std::max(0L, timeMs + below(1500) - 300);
      const int kind = below(8);
      const auto direction = kind == 6 ? TReplayDirection::kUndo : TReplayDirection::kRedo;
      if (kind < 4 && stamper.Tap(timeMs, forms) && kind == 0) stamper.EndLine(timeMs + 200, forms);
      if (kind == 4) stamper.TakeBack();
      if (kind == 5) stamper.MoveCaret(below(2) == 0);
      if (kind < 6)
        history.Record({0, 1, {stamper.Line().Line()}}, TEditKind::kStamp, 0, 0, 0);
      else if (history.ReplayNext(direction))
        stamper.Update(history.Lines()[0]);
      const std::string& now = history.Lines()[0];
      ASSERT_EQ(stamper.Line().Line(), now);
      ASSERT_EQ(without_times(now), without_times(line));
      const std::vector<long> times = times_of(now);
      ASSERT_TRUE(std::ranges::is_sorted(times)) << now;
    }
    while (history.ReplayNext(TReplayDirection::kUndo)) continue;
    ASSERT_EQ(history.Lines()[0], line);
  }
}

TEST(WordLines, BulkCommandsTakeTheWordsWithTheirLines) {
  const auto changed = [](const char* line, auto change) {
    std::list<std::string> lines{"plain", line};
    change(&lines);
    return lines.back();
  };
  const auto shifted = [&](const char* line, long ms) {
    return changed(line, [=](auto* l) { shift_tags_and_words(l, ms); });
  };
  EXPECT_EQ(shifted("[00:10:00]a [00:11:00]b<00:12.345>", 1234), "[00:11:23]a [00:12:23]b<00:13.575>");
  EXPECT_EQ(shifted("[00:10]a [00:11:20]b", 1600), "[00:12]a [00:13:20]b");
  EXPECT_EQ(shifted("[00:01:00]a [00:02:00]b [00:09:00]c", -5000), "[00:00:00]a [00:00:00]b [00:04:00]c");
  const auto converted = [&](const char* line, bool to) {
    return changed(line, [=](auto* l) { convert_tags_and_words(l, to); });
  };
  EXPECT_EQ(converted("[00:10:60]a <00:10.70>b [00:11:60]c", false), "[00:11]a <00:11.00>b [00:12]c");
  EXPECT_EQ(converted("[00:10]a [00:11]b [00:12.345]c", true), "[00:10:00]a [00:11:00]b [00:12.345]c");
  EXPECT_EQ(changed("[00:10:60]a [00:11:40]b<00:12.00>", delete_tags_and_words), "a b");
}

TEST(WordLines, EqualLinesGetTheSameSpacingFromTheirOwnTag) {
  const std::string chorus = "[00:10:00]la [00:10:50]la\u2060[00:11:00]";
  EXPECT_EQ(with_word_times_of(chorus, "[01:00:00]la la"), "[01:00:00]la [01:00:50]la\u2060[01:01:00]");
  for (const char* other : {"la la", "[01:00:00]la la la"}) EXPECT_EQ(with_word_times_of(chorus, other), other);
  EXPECT_EQ(with_word_times_of("la [00:10:50]la", "[01:00:00]la la"), "[01:00:00]la la") << "no tag to start from";
}

TEST(WordLines, TheSungPartFollowsThePositionAtEachTagOfTheLine) {
  const std::string line = "[00:10:00][01:00:00]one [00:11:00]two [00:12:00]three[00:13:00]";
  const std::pair<long, size_t> rows[] = {{9990, 0}, {10000, 4}, {11500, 8}, {12990, 13}, {13000, 13}, {61000, 8}};
  for (const auto& [positionMs, sung] : rows)
    EXPECT_EQ(TTimedLine(line).BytesSungAt(positionMs, sung_start(line, positionMs)), sung) << positionMs;
  EXPECT_FALSE(TTimedLine(line).UnitSungAt(13000, 10000)) << "after the end";
}
