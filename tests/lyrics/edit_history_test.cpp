#include "lyrics/edit_history.h"

#include "lyrics/bulk_tags.h"
#include "tests/support/testing.h"

using enum TReplayDirection;

namespace {

constexpr bigtime_t kLater = 10000000;

std::list<std::string> lines_of(const TEditHistory& history) {
  return {history.Lines().begin(), history.Lines().end()};
}

void replay(TEditHistory* history, TReplayDirection direction) {
  const std::optional<TReplay> next = history->Next(direction);
  ASSERT_TRUE(next.has_value());
  history->Replay(direction, *next);
}

/** A change anywhere in the document, of any of the shapes that occur. */
TLinesChange any_change(const TEditHistory& history, std::mt19937* random) {
  const auto below = [random](size_t bound) { return static_cast<int32>((*random)() % bound); };
  const auto count = history.Lines().size();
  if (below(4) == 0) {
    std::list<std::string> lines = lines_of(history);
    shift_time_tags(&lines, below(5000));
    return {0, static_cast<int32>(count), std::move(lines)}; // as a command over every line does it
  }
  TLinesChange change;
  change.first = below(count + 1);
  change.removed = below(std::min<size_t>(3, count - static_cast<size_t>(change.first)) + 1);
  for (int32 i = below(4); i > 0; --i)
    change.lines.push_back((below(2) ? "[00:" + std::to_string(below(60)) + ":00]" : "") +
                           std::string(static_cast<size_t>(below(5)), 'a'));
  return change;
}

} // namespace

TEST(EditHistory, EverythingCanBeUndoneAndDoneAgain) {
  SeededRandom random;
  TEditHistory history;
  history.Reset({"[00:10:00]one", "two", "[00:20]three"});
  std::vector<std::list<std::string>> states{lines_of(history)};
  for (int i = 0; i < 1500; ++i) {
    ASSERT_TRUE(history.Record(any_change(history, &random), TEditKind::kOther, 0, 0, 0));
    states.push_back(lines_of(history));
  }
  for (size_t i = states.size() - 1; i > 0; --i) {
    ASSERT_EQ(lines_of(history), states[i]);
    EXPECT_EQ(history.IsSaved(), false);
    replay(&history, kUndo);
  }
  EXPECT_EQ(lines_of(history), states[0]);
  EXPECT_TRUE(history.IsSaved());
  EXPECT_FALSE(history.Next(kUndo));
  for (size_t i = 1; i < states.size(); ++i) {
    replay(&history, kRedo);
    ASSERT_EQ(lines_of(history), states[i]);
  }
  EXPECT_FALSE(history.Next(kRedo));
}

TEST(EditHistory, TypingInOneLineIsOneStepUntilItPausesOrIsSaved) {
  TEditHistory history;
  history.Reset({"", "x"});
  const auto type = [&](const char* line, bigtime_t when) {
    EXPECT_TRUE(history.Record({0, 1, {line}}, TEditKind::kTyping, 0, 0, when));
  };
  type("a", 0);
  type("ab", 500000);
  type("abc", 1400000);
  history.MarkSaved();
  type("abcd", 1500000);
  type("abcd", kLater); // a key that changed nothing
  type("abcde", kLater);
  replay(&history, kUndo);
  EXPECT_EQ(history.Lines()[0], "abcd");
  replay(&history, kUndo);
  EXPECT_EQ(history.Lines()[0], "abc");
  EXPECT_TRUE(history.IsSaved());
  replay(&history, kUndo);
  EXPECT_EQ(history.Lines()[0], "");
  type("z", kLater); // after an undo nothing is joined, and what was undone is gone
  EXPECT_FALSE(history.Next(kRedo));
  EXPECT_FALSE(history.IsSaved());
  replay(&history, kUndo);
  EXPECT_EQ(history.Lines()[0], "");
  replay(&history, kRedo);
  type("zy", kLater + 1);
  replay(&history, kUndo);
  EXPECT_EQ(history.Lines()[0], "z") << "nor after a redo";
}

TEST(EditHistory, RecoveredTypingJoinsOnlyTheLastStepOfOneWholeLine) {
  const std::tuple<int32, bool, const char*, const char*> steps[] = {
      {1, false, "one\n", "on\n"}, {2, false, "one\ntwo\n", "on\ntw\n"}, {1, true, "o\n", "u\n"}};
  for (const auto& [count, areHeads, before, after] : steps) {
    TEditHistory history;
    history.Reset({"one", "two"});
    TEditStep step{
        .kind = TEditKind::kTyping, .countBefore = count, .countAfter = count, .before = before, .after = after};
    step.areHeads = areHeads;
    ASSERT_TRUE(history.RestoreStep(step));
    EXPECT_EQ(history.RestoreTyping("o"), count == 1 && !areHeads);
    replay(&history, kUndo);
    EXPECT_FALSE(history.RestoreTyping("x")) << "undone";
  }
}

TEST(EditHistory, FastTypingInTwoLinesIsAStepForEach) {
  TEditHistory history;
  history.Reset({"a", "b"});
  history.Record({0, 1, {"ax"}}, TEditKind::kTyping, 0, 0, 0);
  history.Record({1, 1, {"by"}}, TEditKind::kTyping, 1, 1, 1000);
  history.Record({1, 1, {"b", "y"}}, TEditKind::kTyping, 1, 1, 2000);
  history.Record({1, 1, {"bz"}}, TEditKind::kTyping, 1, 1, 3000);
  replay(&history, kUndo);
  EXPECT_EQ(lines_of(history), (std::list<std::string>{"ax", "b", "y"})) << "a line break ends the step";
  replay(&history, kUndo);
  replay(&history, kUndo);
  EXPECT_EQ(lines_of(history), (std::list<std::string>{"ax", "b"}));
  replay(&history, kUndo);
  EXPECT_EQ(lines_of(history), (std::list<std::string>{"a", "b"}));
}

TEST(EditHistory, LinesComeBackWithTheLineThatWasCurrent) {
  TEditHistory history;
  history.Reset({"a", "b"});
  history.Record({0, 1, {"[00:01:00]a"}}, TEditKind::kStamp, 0, 1, 0);
  EXPECT_EQ(history.LastKind(), TEditKind::kStamp);
  EXPECT_EQ(history.Next(kUndo)->line, 0);
  replay(&history, kUndo);
  EXPECT_FALSE(history.LastKind());
  EXPECT_EQ(history.Next(kRedo)->line, 1);
}

TEST(EditHistory, ChangeOutsideTheDocumentIsRefused) {
  TEditHistory history;
  history.Reset({"a"});
  EXPECT_FALSE(history.Record({1, 1, {"b"}}, TEditKind::kOther, 0, 0, 0));
  EXPECT_FALSE(history.Record({-1, 1, {"b"}}, TEditKind::kOther, 0, 0, 0));
  EXPECT_FALSE(history.Record({0, INT32_MAX, {}}, TEditKind::kOther, 0, 0, 0));
  EXPECT_EQ(history.Lines().size(), 1u);
  EXPECT_FALSE(history.Next(kUndo));
}

TEST(EditHistory, HugeStepsPushTheOldestOut) {
  TEditHistory history;
  history.Reset({""});
  for (int i = 0; i < 10; ++i)
    history.Record({0, 1, {std::string(20 << 20, static_cast<char>('a' + i))}}, TEditKind::kOther, 0, 0, 0);
  int steps = 0;
  while (history.Next(kUndo)) {
    replay(&history, kUndo);
    EXPECT_EQ(history.Lines()[0][0], 'i' - steps++);
  }
  EXPECT_GE(steps, 2);
  EXPECT_LT(steps, 10);
  EXPECT_FALSE(history.IsSaved()) << "the way back to the saved state is gone";
}
