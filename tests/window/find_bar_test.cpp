#include "platform/interface/view.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

struct FindBar : EditorByHand {
  void Type(const std::string& text) {
    for (const char c : text) Press(std::string(1, c));
  }
  void PressAll(const std::vector<std::string>& keys) {
    for (const std::string& key : keys) Press(key);
  }
};

TEST_F(FindBar, FindsLinesInTheListAndGivesTheKeyboardBack) {
  Open(fFolder.Write("a.lrc", "[00:10:00]one\ntwo 10\n[00:12:00]One\n"));
  Press("Ctrl+F");
  EXPECT_EQ(hands::focused_view(*fWindow), "FindText");
  Type("one");
  const auto line_after = [this](const std::string& step) {
    step.starts_with("Find") ? Click(step.c_str()) : Press(step);
    return EditView().CurLine();
  };
  EXPECT_EQ(line_after("Return"), 0);
  EXPECT_THAT(Status(), EndsWith("Found in line 1"));
  for (const auto& [step, line] : {std::pair("Return", 2),
                                   {"Shift+Return", 0},
                                   {"FindNext", 2},
                                   {"FindPrevious", 0},
                                   {"FindCase", 0},
                                   {"FindNext", 0},
                                   {"FindCase", 0},
                                   {"FindClose", 0},
                                   {"F3", 2}})
    EXPECT_EQ(line_after(step), line) << step;
  EXPECT_EQ(hands::focused_view(*fWindow), "TagInputView");
  Press("Ctrl+F"); // the text is selected
  Type("10");
  EXPECT_EQ(line_after("Return"), 1) << "without the tags";
  line_after("FindNoTags");
  fWindow->FindView("FindText")->MakeFocus();
  EXPECT_EQ(line_after("Return"), 0);
  Press("Ctrl+F");
  Type("x");
  PressAll({"Return", "Escape"});
  EXPECT_THAT(Status(), EndsWith("Not found: x"));
  EXPECT_EQ(hands::focused_view(*fWindow), "TagInputView");
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
  PressAll({"Escape", "Ctrl+Z", "Ctrl+Z"});
  EXPECT_THAT(Lines(), ElementsAre("a b a", "A"));
  Press("Ctrl+H");
  Click("ReplaceAll");
  EXPECT_THAT(Lines(), ElementsAre("xy b xy", "xy"));
  EXPECT_THAT(Status(), EndsWith("Places replaced: 3"));
  PressAll({"Escape", "Ctrl+Z"});
  EXPECT_THAT(Lines(), ElementsAre("a b a", "A"));
}
