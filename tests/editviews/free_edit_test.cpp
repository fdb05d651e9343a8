#include "tests/support/editor_fixture.h"

#include "editviews/free_edit_view.h"
#include "lyrics/line_limit.h"
#include "platform/interface/clipboard.h"

using namespace testing;

struct FreeEdit : EditorByHand {
  void OpenFreely(const std::string& text) {
    Open(fFolder.Write("a.lrc", text));
    Press("Ctrl+E");
  }
  TFreeEditView& View() const { return *static_cast<TFreeEditView*>(fWindow->FindView("FreeEditView")); }
};

TEST_F(FreeEdit, LinesMarkAndCurrentLineGoAlongWithTheMode) {
  Open(fFolder.Write("a.lrc", "one\ntwo\nthree\n"));
  Press("Down");
  Change();
  Press("Ctrl+E");
  EXPECT_THAT(Status(), StartsWith(" [Edit]"));
  EXPECT_EQ(View().Text(), "one\ntwo\nthree\n");
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(View().CurLine(), 1);
  Press("x"); // the keys are the text's
  EXPECT_EQ(View().Text(), "one\nxtwo\nthree\n");
  Press("Ctrl+End", "Ctrl+D");
  EXPECT_THAT(Status(), StartsWith(" [Tag, standard]"));
  EXPECT_THAT(Lines(), ElementsAre("one", "xtwo", "three"));
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(fWindow->CurrentFocus(), fWindow->FindView("TagInputView"));
  Press("Delete");
  EXPECT_EQ(Status().substr(Status().size() - 1), "3") << "after the last line end means the last line";
}

TEST_F(FreeEdit, TabIsTypedAndOtherKeysLeaveTheText) {
  OpenFreely("one\n");
  Press("Tab");
  EXPECT_EQ(View().Text(), "\tone\n");
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(fWindow->CurrentFocus(), &View());
  std::vector<const BView*> next;
  for (const char* key : {"Ctrl+Tab", "F6", "Ctrl+Shift+Tab", "Shift+Tab"}) {
    View().MakeFocus();
    Settle();
    Press(key);
    EXPECT_NE(fWindow->CurrentFocus(), &View()) << key;
    next.push_back(fWindow->CurrentFocus());
  }
  EXPECT_EQ(next[0], next[1]);
  EXPECT_EQ(next[2], next[3]);
  EXPECT_NE(next[0], next[2]);
  EXPECT_EQ(View().Text(), "\tone\n");
}

TEST_F(FreeEdit, PastingMoreThanADocumentHoldsIsRefusedWithAWord) {
  OpenFreely("kept\n");
  for (const std::string& text : {std::string(kMostLines, '\n'), std::string(kMostPastedBytes + 1, 'x')}) {
    hands::paste(*fWindow, text);
    Settle();
    EXPECT_THAT(Status(), EndsWith(gLLT->Text("Err_Paste_Too_Long")));
    EXPECT_EQ(View().Text(), "kept\n");
    EXPECT_FALSE(IsModified());
    SendToView(BMessage(kMsgDefaultStatBar));
  }
}

TEST_F(FreeEdit, OnlyKeysThatMayChangeTheTextMarkIt) {
  OpenFreely("one\ntwo\n");
  for (const char* key : {"Home", "End", "Ins", "PgUp", "PgDown", "F5", "Esc", "Left", "Right", "Up", "Down", "Ctrl+C",
                          "Ctrl+A", "Ctrl+Right", "Shift+Down"}) {
    Press(key);
    EXPECT_FALSE(IsModified()) << key;
  }
  for (const char* key : {"a", "Return", "Backspace", "Del", "Ctrl+Backspace", "Ctrl+X"}) {
    View().SetLines({"one", "two"});
    for (const char* way : {"Ctrl+Home", "Down", "Shift+Right"}) Press(way);
    View().SetModified(false);
    Press(key);
    EXPECT_TRUE(IsModified()) << key;
  }
  Press("Ctrl+Home");
  View().SetModified(false);
  Press("Backspace"); // nothing before the caret
  EXPECT_TRUE(IsModified());
  View().SetModified(false);
  hands::compose(*fWindow, "に", "日本");
  Settle();
  EXPECT_TRUE(IsModified());
}

TEST_F(FreeEdit, WrappedLinesCountAsOne) {
  OpenFreely("first\n" + std::string(400, 'w') + "\nthird\n");
  View().SetCurLine(2);
  EXPECT_EQ(View().CurLine(), 2);
  Press("z");
  EXPECT_THAT(Lines(), ElementsAre("first", std::string(400, 'w'), "zthird"));
  EXPECT_GT(View().CurrentLine(), 2);
  View().SetCurLine(99);
  EXPECT_EQ(View().CurLine(), 3);
}

TEST_F(FreeEdit, TextIsSavedAsItIsShown) {
  const std::string path = fFolder.Path() + "/a.lrc";
  OpenFreely("[00:01]one\r\ntwo\r\n");
  Press("Ctrl+End");
  for (const char* key : {"[", "x", "]", "Return", "Return", "y"}) Press(key);
  Press("Ctrl+S");
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("[00:01]one\r\ntwo\r\n[x]\r\n\r\ny\r\n\0", 28));
  EXPECT_FALSE(IsModified());
  Press("Ctrl+A", "Del", "Ctrl+S");
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("\0", 1));
  Press("Ctrl+T"); // no lines at all
  EXPECT_THAT(Lines(), ElementsAre());
  Press("Space", "Ctrl+E", "q");
  EXPECT_THAT(Lines(), ElementsAre("q"));
}
