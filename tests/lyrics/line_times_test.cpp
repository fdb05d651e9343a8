#include "lyrics/line_times.h"

#include "lyrics/export.h"
#include "lyrics/sung_lines.h"
#include "tests/support/testing.h"

namespace {

TLineTimes times_of(const std::list<std::string>& lines) {
  TLineTimes times;
  for (const std::string& line : lines) times.Append(line);
  return times;
}

using Times = std::vector<int32>;

} // namespace

TEST(LineTimes, TheRowThatIsSungIsTheLastWhoseTimeHasCome) {
  TLineTimes lines = times_of({"[Chorus]", "[00:10]a", "no tag", "[00:30:50]b", "[00:20]c", "[00:20]d"});
  EXPECT_EQ(lines.RowAt(9999), -1);
  EXPECT_EQ(lines.RowAt(10000), 1);
  EXPECT_EQ(lines.RowAt(19999), 1);
  EXPECT_EQ(lines.RowAt(20000), 5) << "of two at once the lower one";
  EXPECT_EQ(lines.RowAt(30499), 5);
  EXPECT_EQ(lines.RowAt(100000), 3);
  EXPECT_EQ(lines.RowAt(0), -1) << "the song was taken back";
  lines.Change(2, "[00:00]now tagged");
  EXPECT_EQ(lines.RowAt(0), 2);
  lines.Change(2, "no more");
  EXPECT_EQ(lines.RowAt(5000), -1);
  lines.RowAt(100000);
  lines.Clear();
  EXPECT_EQ(lines.RowAt(100000), -1);
  lines.Append("[00:01]a");
  EXPECT_EQ(lines.RowAt(100000), 0);
}

TEST(LineTimes, ALineWithSeveralTagsIsSungAtEachOfThem) {
  TLineTimes lines = times_of({"[00:10][00:30]refrain", "[00:20]verse", "[00:40.50]end"});
  EXPECT_EQ(lines.RowAt(15000), 0);
  EXPECT_EQ(lines.RowAt(25000), 1);
  EXPECT_EQ(lines.RowAt(35000), 0);
  EXPECT_EQ(lines.Times(), (Times{10000, 20000, 30000, 40500}));
  lines.Change(0, "[00:10]once");
  EXPECT_EQ(lines.RowAt(35000), 1);
}

TEST(LineTimes, TheOffsetHeaderMovesEveryLine) {
  TLineTimes lines = times_of({"[00:01]a", "[offset:2000]", "[00:05]b", "[offset:-500]"});
  EXPECT_EQ(lines.Times(), (Times{0, 3000})) << "earlier, but not before the song; the first header counts";
  EXPECT_EQ(lines.RowAt(3000), 2);
  EXPECT_EQ(lines.TimeOf(2), 3000);
  EXPECT_EQ(lines.TimeOf(1), std::nullopt);
  lines.Change(1, "no header");
  EXPECT_EQ(lines.RowAt(5000), 0);
  EXPECT_EQ(lines.RowAt(5500), 2);
}

TEST(LineTimes, TheEditorAndTheExportAgreeAboutEveryLine) {
  const std::list<std::string> lines = {"[offset:1500]", "[00:10][00:30.25]a", "plain",      "[00:05]<00:06.00>words",
                                        "[1:23]odd",     "[Chorus]",           "[00:01:00]b"};
  long linesLeftOut = 77;
  Times starts;
  for (const TCue& cue : cues_of(lines, &linesLeftOut)) starts.push_back(static_cast<int32>(cue.startMs));
  EXPECT_EQ(starts, times_of(lines).Times());
  EXPECT_EQ(linesLeftOut, 1) << "the odd tag";
}
