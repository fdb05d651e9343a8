#include "platform/app/message.h"
#include "platform/interface/text_view.h"
#include "platform/interface/window.h"
#include "tests/display/hands.h"

#include <gtest/gtest.h>

namespace {

class Editor : public BTextView {
public:
  using BTextView::BTextView;
  std::string fEntered;

protected:
  void InsertText(std::string_view text) override {
    fEntered += text;
    BTextView::InsertText(text);
  }
};

} // namespace

class TextView : public testing::Test {
protected:
  TextView() : fWindow(new BWindow({100, 100, 299, 299}, "text")) {
    fWindow->SetRunsOnShow(false);
    fEditor = new Editor({0, 0, 199, 199}, "editor", {0, 0, 199, 199}, B_FOLLOW_ALL_SIDES);
    fWindow->AddChild(fEditor);
    fEditor->MakeFocus();
    fWindow->Show();
    hands::settle(*fWindow);
  }
  ~TextView() override {
    fWindow->Lock();
    fWindow->Quit();
  }
  BWindow* fWindow;
  Editor* fEditor;
};

TEST_F(TextView, EveryWayTextComesInPassesTheHook) {
  hands::press(*fWindow, "a");
  hands::press(*fWindow, "Return");
  hands::settle(*fWindow);
  hands::paste(*fWindow, "paste");
  hands::settle(*fWindow);
  hands::compose(*fWindow, "に", "日本");
  hands::settle(*fWindow);
  EXPECT_EQ(fEditor->fEntered, "a\npaste日本");
  EXPECT_EQ(fEditor->Text(), "a\npaste日本");
}

TEST_F(TextView, KeysTypedAtOnceKeepTheirOrder) {
  fEditor->SetText("xyz");
  for (const char* key : {"Right", "a", "Left", "b", "Del", "End", "Backspace"}) hands::press(*fWindow, key);
  hands::settle(*fWindow);
  EXPECT_EQ(fEditor->Text(), "xby");
}

TEST_F(TextView, SetTextTakesTheCaretToTheStartAndIsNoInput) {
  fEditor->SetText("one\ntwo\n");
  EXPECT_EQ(fEditor->CurrentLine(), 0);
  EXPECT_TRUE(fEditor->fEntered.empty());
  EXPECT_EQ(fEditor->TextLength(), 8);
}

TEST_F(TextView, WrappedLineCountsAsOneWhileTheRectangleIsWide) {
  const std::string longLine(200, 'w');
  fEditor->SetText("first\n" + longLine + "\nthird\n");
  EXPECT_GT(fEditor->CountLines(), 4);
  fEditor->SetTextRect({0, 0, 10000, 199});
  EXPECT_EQ(fEditor->CountLines(), 4);
  fEditor->GoToLine(2);
  EXPECT_EQ(fEditor->CurrentLine(), 2);
  fEditor->SetTextRect({0, 0, 199, 199});
  EXPECT_GT(fEditor->CurrentLine(), 2);
  fEditor->GoToLine(1000);
  EXPECT_EQ(fEditor->CurrentLine(), fEditor->CountLines() - 1);
}

TEST_F(TextView, SelectionCountsBytes) {
  fEditor->SetText("あいう");
  fEditor->Select(3, 6);
  int32 start = 0, end = 0;
  fEditor->GetSelection(&start, &end);
  EXPECT_EQ(start, 3);
  EXPECT_EQ(end, 6);
  fEditor->Insert("x");
  EXPECT_EQ(fEditor->Text(), "あxう");
}
