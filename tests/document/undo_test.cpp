#include "tests/support/editor_fixture.h"

using namespace testing;

struct UndoAndRedo : EditorByHand {
  hands::MenuLine EditItem(size_t index) const { return hands::menu_lines(*fWindow, {"E - Edit"}).at(index); }
  /** Where the player goes for the row that the key selects. */
  int32 SeekTarget(const char* key) {
    Press(key);
    Press("Return");
    Until([this] { return !fHost->Commands().empty(); });
    const auto commands = fHost->Commands();
    return commands.empty() ? -1 : commands.back().second;
  }
};

TEST_F(UndoAndRedo, EveryCommandOfBothViewsIsOneStep) {
  Open(fFolder.Write("a.lrc", "[00:10:00]one\ntwo\n"));
  EXPECT_FALSE(EditItem(0).isEnabled);
  Press("+");
  Press("Space"); // stamps line 1, goes to line 2
  const std::list<std::string> stamped = Lines();
  Press("Delete"); // no tag there: a step all the same
  Shift("1000");
  Press("Ctrl+E");
  for (const char* key : {"a", "b", "c"}) Press(key);
  const std::list<std::string> typed = Lines();
  Press("Ctrl+T");
  EXPECT_TRUE(EditItem(0).isEnabled);
  EXPECT_FALSE(EditItem(1).isEnabled);

  Press("Ctrl+Z", "Ctrl+Z", "Ctrl+Z");
  EXPECT_EQ(Lines(), stamped);
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("[00:10:01]one", "two"));
  EXPECT_TRUE(IsModified());
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("[00:10:00]one", "two"));
  EXPECT_FALSE(IsModified());
  EXPECT_FALSE(EditItem(0).isEnabled);
  Press("Ctrl+Z"); // a disabled item's shortcut does nothing
  Press("Ctrl+E");
  for (int i = 0; i < 5; ++i) Press("Ctrl+Shift+Z");
  EXPECT_EQ(Lines(), typed);
  EXPECT_TRUE(IsModified());
  EXPECT_FALSE(EditItem(1).isEnabled);
}

TEST_F(UndoAndRedo, UndoesStepsFromBeforeASave) {
  Open(fFolder.Write("a.lrc", "[00:10]one\n"));
  for (const char* key : {"+", "+", "Ctrl+S", "Ctrl+Z"}) Press(key);
  EXPECT_TRUE(IsModified());
  EXPECT_THAT(Lines(), ElementsAre("[00:11]one"));
  EXPECT_THAT(Status(), EndsWith("Undone"));
  Press("-");
  EXPECT_FALSE(EditItem(1).isEnabled);
  Answer("N", [this] { Open(fFolder.Write("b.lrc", "two\n")); });
  EXPECT_FALSE(EditItem(0).isEnabled) << "another document has a history of its own";
}

TEST_F(UndoAndRedo, KeysAtOnceUndoWhatWasTypedBeforeThem) {
  Open(fFolder.Write("a.lrc", "one\n"));
  Press("Ctrl+E");
  Press("a"); // from here on there is something to undo
  for (const char* key : {"b", "Return", "c", "Backspace", "Ctrl+Z", "Ctrl+Z", "Ctrl+Z"}) hands::press(*fWindow, key);
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("one"));
}

TEST_F(UndoAndRedo, ShiftOfSeveralRowsComesBackOnTheScreenAndInThePlayer) {
  Open(fFolder.Write("a.lrc", "[00:10]one\n[00:20]two\n[00:30]three\n"));
  const std::string before = hands::pixels(*fWindow, "TagInputView");
  Shift("5000");
  EXPECT_NE(hands::pixels(*fWindow, "TagInputView"), before);
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("[00:10]one", "[00:20]two", "[00:30]three"));
  EXPECT_EQ(hands::pixels(*fWindow, "TagInputView"), before);
  EXPECT_EQ(SeekTarget("End"), 30000);
}

TEST_F(UndoAndRedo, ANewTagIsPlayed) {
  Open(fFolder.Write("a.lrc", "one\ntwo\n"));
  PlayAt(7000);
  Press("Space");
  EXPECT_EQ(SeekTarget("Home"), 7000);
}

TEST_F(UndoAndRedo, TheEndOfAFreeTextIsWhereItWasAfterAnUndo) {
  Open(fFolder.Write("a.lrc", "one\n"));
  Press("Ctrl+E");
  for (const char* key : {"Return", "Ctrl+Z", "Ctrl+End", "x"}) Press(key);
  EXPECT_THAT(Lines(), ElementsAre("one", "x"));
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("one"));
  EXPECT_FALSE(IsModified());
}

TEST_F(UndoAndRedo, AnyWorkComesBackStepByStep) {
  SeededRandom random;
  Open(fFolder.Write("a.lrc", "[00:10:00]one\ntwo\n[00:20]three\n\nfive\n"));
  const std::list<std::string> opened = Lines();
  const char* const keys[] = {"Ctrl+E", "Ctrl+T", "Ctrl+D",   "Space",      "Down",      "Up",
                              "+",      "-",      "Delete",   "x",          "Backspace", "Return",
                              "Home",   "Ctrl+X", "Ctrl+End", "Shift+Down", "Ctrl+Z"};
  for (int i = 0; i < 120; ++i) {
    Press(keys[random() % std::size(keys)]);
    if (random() % 10 == 0) Shift("1234");
  }
  Shift("10"); // a stamp that Backspace took back last could still be redone
  const std::list<std::string> worked = Lines();
  for (int i = 0; i < 200; ++i) Press("Ctrl+Z");
  EXPECT_EQ(Lines(), opened);
  EXPECT_FALSE(IsModified());
  for (int i = 0; i < 200; ++i) Press("Ctrl+Shift+Z");
  EXPECT_EQ(Lines(), worked);
}
