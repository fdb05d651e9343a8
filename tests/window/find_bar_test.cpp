#include "platform/interface/view.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

struct FindBar : EditorByHand {
  void Type(const std::string& text) {
    for (const char c : text) Press(std::string(1, c));
  }
};

TEST_F(FindBar, FindsLinesInTheListAndGivesTheKeyboardBack) {
  Open(fFolder.Write("a.lrc", "[00:10:00]one\ntwo 10\n[00:12:00]One\n"));
  Press("Ctrl+F");
  EXPECT_EQ(hands::focused_view(*fWindow), "FindText");
  Type("one");
  Press("Return");
  EXPECT_THAT(Status(), EndsWith("Found in line 1"));
  Press("Return");
  EXPECT_EQ(EditView().CurLine(), 2);
  Press("Shift+Return");
  EXPECT_EQ(EditView().CurLine(), 0);
  Press("Escape");
  EXPECT_EQ(hands::focused_view(*fWindow), "TagInputView");
  Press("F3");
  EXPECT_EQ(EditView().CurLine(), 2);
  Press("Ctrl+F"); // the text is selected
  Type("10");
  Press("Return");
  EXPECT_EQ(EditView().CurLine(), 1) << "without the tags";
  Press("Ctrl+F");
  Type("x");
  Press("Return");
  EXPECT_THAT(Status(), EndsWith("Not found: x"));
}

TEST_F(FindBar, ReplacesOneAfterTheOtherOrAllInOneStep) {
  Open(fFolder.Write("a.lrc", "a b a\nA\n"));
  Press("Ctrl+E", "Ctrl+H");
  Type("a");
  Press("Return");
  fWindow->FindView("ReplaceWith")->MakeFocus();
  Settle();
  Type("xy");
  Press("Return");
  EXPECT_THAT(Lines(), ElementsAre("xy b a", "A"));
  Press("Return");
  EXPECT_THAT(Lines(), ElementsAre("xy b xy", "A"));
  for (const char* key : {"Escape", "Ctrl+Z", "Ctrl+Z"}) Press(key);
  EXPECT_THAT(Lines(), ElementsAre("a b a", "A"));
  Press("Ctrl+H");
  hands::click(*fWindow, "ReplaceAll", {8, 8});
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("xy b xy", "xy"));
  EXPECT_THAT(Status(), EndsWith("Places replaced: 3"));
  for (const char* key : {"Escape", "Ctrl+Z"}) Press(key);
  EXPECT_THAT(Lines(), ElementsAre("a b a", "A"));
}
