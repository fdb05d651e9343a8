#include "document/editor_view.h"
#include "editviews/tag_input_view.h"
#include "lyrics/line_limit.h"
#include "platform/interface/clipboard.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

struct TagInputLines : EditorByHand {
  TTagInputView& View() const { return *static_cast<TTagInputView*>(fWindow->FindView("TagInputView")); }
  std::pair<int32, int32> Selected() const { return {View().Selection().first, View().Selection().last}; }
};

TEST_F(TagInputLines, TextFromTheClipboardFillsAnEmptyDocumentReadyToStamp) {
  PlayAt(1230);
  hands::paste(*fWindow, "one\r\ntwo\r\n\r\nthree");
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("one", "two", "", "three"));
  EXPECT_THAT(Status(), EndsWith("Lines pasted: 4"));
  Press("Space");
  EXPECT_EQ(Lines().front(), "[00:01:23]one");
  Press("Ctrl+Z", "Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("")) << "one step";
  EXPECT_FALSE(IsModified());
}

TEST_F(TagInputLines, LinesGoBelowTheSelectedOneAndComeBackByteForByte) {
  SetPref([](TPrefValues* values) { values->readEncoding = 0; });
  Show("a\nbroken \xFF\nc\n", 1);
  Press("Ctrl+C");
  EXPECT_THAT(Status(), EndsWith("Lines copied: 1"));
  Press("Down", "Shift+Insert");
  EXPECT_THAT(Lines(), ElementsAre("a", "broken \xFF", "c", "broken \xFF"));
  EXPECT_EQ(View().CurLine(), 3);
}

TEST_F(TagInputLines, PastingNothingOrTooMuchIsRefusedWithAWord) {
  Show("kept\n");
  set_clipboard_text("");
  Press("Shift+Insert");
  EXPECT_THAT(Status(), EndsWith(gLLT->Text("StatBarStr_Nothing_To_Paste")));
  for (const std::string& text : {std::string(kMostLines, '\n'), std::string(kMostPastedBytes + 1, 'x')}) {
    set_clipboard_text(text);
    Press("Shift+Insert");
    EXPECT_THAT(Status(), EndsWith(gLLT->Text("Err_Paste_Too_Long")));
    EXPECT_THAT(Lines(), ElementsAre("kept"));
  }
}

TEST_F(TagInputLines, EachCommandIsOneStepAndUndoBringsTheSelectionBack) {
  using Range = std::pair<int32, int32>;
  const struct {
    const char* key;
    int32 current; // selected with Shift from there to the next line
    std::list<std::string> lines;
    Range selected;
    const char* report;
  } rows[] = {
      {"Shift+Insert", 0, {"[00:01:00]a", "b", "x", "[00:03:00]c", "d"}, {2, 2}, "Lines pasted: 1"},
      {"Ctrl+Delete", 1, {"[00:01:00]a", "d"}, {1, 1}, "Lines deleted: 2"},
      {"Ctrl+X", 2, {"[00:01:00]a", "b"}, {1, 1}, "Lines deleted: 2"},
      {"Insert", 0, {"[00:01:00]a", "b", "", "[00:03:00]c", "d"}, {2, 2}, "Inserted line 3"},
      {"Alt+Up", 1, {"b", "[00:03:00]c", "[00:01:00]a", "d"}, {0, 1}, "Moved to line 1"},
      {"Alt+Down", 0, {"[00:03:00]c", "[00:01:00]a", "b", "d"}, {1, 2}, "Moved to line 2"},
      {"Ctrl+J", 0, {"[00:01:00]a b", "[00:03:00]c", "d"}, {0, 0}, "Joined into line 1"},
  };
  set_clipboard_text("x\n");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.key);
    Show("[00:01:00]a\nb\n[00:03:00]c\nd\n", row.current);
    Press("Shift+Down");
    Press(row.key);
    EXPECT_EQ(Lines(), row.lines);
    EXPECT_EQ(Selected(), row.selected);
    EXPECT_THAT(Status(), EndsWith(row.report));
    Press("Ctrl+Z");
    EXPECT_THAT(Lines(), ElementsAre("[00:01:00]a", "b", "[00:03:00]c", "d"));
    EXPECT_EQ(Selected(), Range(row.current, row.current + 1));
    EXPECT_FALSE(IsModified());
    Press("Ctrl+Shift+Z");
    EXPECT_EQ(Selected(), row.selected);
    Press("Ctrl+Z");
  }
  EXPECT_EQ(get_clipboard_text(100).text, "[00:03:00]c\nd\n") << "what was cut";
}

TEST_F(TagInputLines, EveryLineCanBeDeletedAndCommandsWithoutAnyDoNothing) {
  Show("a\nb\n");
  Press("Ctrl+A");
  EXPECT_EQ(View().CurLine(), 0) << "the line that is worked on stays";
  Press("Ctrl+Delete");
  EXPECT_THAT(Lines(), ElementsAre(""));
  for (const char* key : {"Ctrl+Delete", "Alt+Up", "Alt+Down", "Ctrl+J"}) Press(key);
  EXPECT_THAT(Status(), EndsWith("There is no next line to join"));
  EXPECT_THAT(Lines(), ElementsAre(""));
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("a", "b"));
}

TEST_F(TagInputLines, RequiredCommandsWorkOnTheCurrentLineOfSeveral) {
  Show("[00:01:00]a\n[00:02:00]b\nc\n");
  Press("Shift+Down", "Delete");
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]a", "b", "c"));
  PlayAt(5000);
  Press("Space");
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]a", "[00:05:00]b", "c"));
  EXPECT_EQ(Selected(), std::pair(2, 2));
  hands::click(*fWindow, "TagInputView", {20, 3});
  Settle();
  EXPECT_EQ(Selected(), std::pair(0, 0));
}

TEST_F(TagInputLines, LineIsSplitAtTheCaretUnlessItHasChangedMeanwhile) {
  Show("[00:01:00]one two\nb\n");
  const auto split = [this](const char* text) {
    BMessage answer(kMsgSplitLineAt);
    answer.AddInt32("Row", 0);
    for (const auto& [field, value] : {std::pair("Text", text), {"Before", "one "}, {"After", "two"}})
      answer.AddString(field, value);
    SendToView(answer);
  };
  split("another text");
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]one two", "b"));
  EXPECT_THAT(Status(), EndsWith("the line has changed in the meantime"));
  EXPECT_FALSE(IsModified());
  Press("Ctrl+Shift+J");
  BWindow& dialog = hands::wait_for_window("Split line");
  hands::press(dialog, "Return"); // at the blank in the middle
  ASSERT_TRUE(Until([this] { return Lines().size() == 3; }));
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]one", "two", "b"));
  EXPECT_THAT(Status(), EndsWith("Split line 1"));
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]one two", "b"));
}
