#include "platform/interface/text_view.h"
#include "tests/support/with_window.h"

namespace {

class TextWindow : public BWindow {
public:
  TextWindow() : BWindow({100, 100, 299, 299}, "text") {
    fEditor = new BTextView({0, 0, 199, 199}, "editor", B_FOLLOW_ALL_SIDES);
    AddChild(fEditor);
    fEditor->MakeFocus();
  }
  BTextView* fEditor;
};

} // namespace

class TextKept : public WithWindow<TextWindow> {
protected:
  BTextView* const fEditor = fWindow->fEditor;
};

TEST_F(TextKept, NoBreakSpacesAndBytesThatAreNoTextSurviveCutAndPaste) {
  const std::string text = "a\u00A0b\u202Fc\xFF\xE3\x81 d\u2028e\n\u00A0f";
  fEditor->SetText(text);
  for (const char* key : {"Ctrl+A", "Ctrl+X"}) Press(key);
  EXPECT_EQ(fEditor->Text(), "");
  Press("Ctrl+V");
  EXPECT_EQ(fEditor->Text(), text);
}

TEST_F(TextKept, InputMethodReplacesWhatItNames) {
  fEditor->SetText("かな\nabc");
  Press("Ctrl+Home");
  Press("End");
  hands::compose_over(*fWindow, "仮名", -2, 2);
  hands::settle(*fWindow);
  EXPECT_EQ(fEditor->Text(), "仮名\nabc");
  hands::compose_over(*fWindow, "", -1, 1);
  hands::settle(*fWindow);
  EXPECT_EQ(fEditor->Text(), "仮\nabc");
  hands::compose_over(*fWindow, "x", 1, 1000);
  hands::settle(*fWindow);
  EXPECT_EQ(fEditor->Text(), "仮\nx") << "bounded by the text";
}
