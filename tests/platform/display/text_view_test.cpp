#include "platform/interface/text_view.h"
#include "tests/support/with_window.h"

namespace {

struct Editor : BTextView {
  using BTextView::BTextView;
  std::string fEntered;
  std::vector<text_change> fChanges;
  std::function<void()> fAtNextChange;

protected:
  void TextChanged(const text_change& change) override {
    fChanges.push_back(change);
    if (fAtNextChange) std::exchange(fAtNextChange, nullptr)();
  }
  void InsertText(std::string_view text) override {
    fEntered += text;
    BTextView::InsertText(text);
  }
};

struct TextWindow : BWindow {
  TextWindow() : BWindow({100, 100, 299, 299}, "text") {
    fEditor = new Editor({0, 0, 199, 199}, "editor", B_FOLLOW_ALL_SIDES);
    fEditor->SetText("before it is shown");
    AddChild(fEditor);
    fEditor->MakeFocus();
  }
  Editor* fEditor;
};

} // namespace

struct TextView : WithWindow<TextWindow> {
  Editor* const fEditor = fWindow->fEditor;
};

TEST_F(TextView, TypedPastedAndComposedTextPassesTheHook) {
  for (const char* key : {"a", "Return"}) Press(key);
  hands::paste(*fWindow, "paste");
  hands::compose(*fWindow, "に", "日本");
  hands::settle(*fWindow);
  EXPECT_EQ(fEditor->fEntered, "a\npaste日本");
  EXPECT_EQ(fEditor->Text(), "a\npaste日本before it is shown");
}

TEST_F(TextView, CommandsDoNotOvertakeKeys) {
  fEditor->SetText("one two");
  for (const char* key : {"Shift+Right", "Shift+Right", "Ctrl+X", "End", "Ctrl+V", "!", "Left", "Backspace", "Del"})
    hands::press(*fWindow, key);
  hands::settle(*fWindow);
  EXPECT_EQ(fEditor->Text(), "e twoo");
}

TEST_F(TextView, RowsOfAWrappedLineCountAsLines) {
  fEditor->SetText(std::string(200, 'w') + "\nmiddle\nlast");
  fEditor->GoToLine(1000);
  const int32 last = fEditor->CurrentLine();
  EXPECT_GT(last, 2);
  fEditor->GoToLine(last - 1);
  EXPECT_EQ(fEditor->CurrentLine(), last - 1);
}

TEST_F(TextView, ReplayedChangesReproduceTheText) {
  fEditor->SetText("a\nb\nc\n");
  hands::settle(*fWindow);
  EXPECT_TRUE(fEditor->fChanges.empty() && fEditor->fEntered.empty()) << "changes by the program are not reported";
  std::vector<std::string> mirror{"a", "b", "c", ""};
  for (const char* key : {"x", "Return", "Down", "y", "Backspace", "Backspace", "Delete", "Ctrl+End", "z", "Return",
                          "Backspace", "Ctrl+Home", "Delete", "Delete", "Shift+Down", "Shift+Right", "Delete"})
    hands::press(*fWindow, key);
  hands::settle(*fWindow);
  hands::paste(*fWindow, "p\r\nq\rr");
  hands::settle(*fWindow);
  for (const text_change& change : fEditor->fChanges) {
    const auto first = mirror.begin() + change.first;
    mirror.insert(mirror.erase(first, first + change.removed), change.lines.begin(), change.lines.end());
    ASSERT_EQ(change.count, static_cast<int32>(mirror.size()));
  }
  std::string text;
  for (const std::string& line : mirror) text += (&line == &mirror.front() ? "" : "\n") + line;
  EXPECT_EQ(text, fEditor->Text());
}

TEST_F(TextView, ReplacedLinesAreNotReported) {
  const std::tuple<const char*, text_change, const char*> cases[] = {
      {"a\nb\nc\n", {1, 1, {"x", "y"}, 0}, "a\nx\ny\nc\n"},
      {"a\nb\nc", {2, 1, {"x"}, 0}, "a\nb\nx"},
      {"a\nb\nc", {1, 2, {}, 0}, "a"},
      {"a\nb", {0, 2, {}, 0}, ""},
      {"a\nb", {2, 0, {"c", "d"}, 0}, "a\nb\nc\nd"},
      {"a\nb", {0, 0, {"z"}, 0}, "z\na\nb"},
      {"a\nb\n", {0, 1, {}, 0}, "b\n"},
      {"", {0, 1, {"n"}, 0}, "n"},
  };
  for (const auto& [before, change, after] : cases) {
    fEditor->SetText(before);
    EXPECT_TRUE(fEditor->ReplaceLines(change));
    EXPECT_EQ(fEditor->Text(), after) << before;
  }
  hands::settle(*fWindow);
  EXPECT_TRUE(fEditor->fChanges.empty());
}

TEST_F(TextView, PendingChangesAreReportedBeforeLinesAreReplaced) {
  fEditor->SetText("a\nb");
  hands::settle(*fWindow);
  fEditor->KeyDown("x", 1); // the change that follows from it is not delivered
  fEditor->fAtNextChange = [this] { fEditor->KeyDown("y", 1); };
  EXPECT_FALSE(fEditor->ReplaceLines({0, 1, {"A"}, 0})) << "typed meanwhile";
  EXPECT_TRUE(fEditor->ReplaceLines({1, 1, {"B"}, 0}));
  ASSERT_EQ(fEditor->fChanges.size(), 2u);
  EXPECT_EQ(fEditor->fChanges.front().lines.front(), "xa");
  EXPECT_EQ(fEditor->Text(), "xya\nB");
}

TEST_F(TextView, InvalidUtf8AndOtherLineEndsAreKept) {
  const std::string text = "caf\xe9 \xff\xc2\nno\u00a0break\n\u2029\u2028 a\rb\U0001F3B5\xf0\x9f";
  fEditor->SetText(text);
  EXPECT_EQ(fEditor->Text(), text);
  fEditor->GoToLine(1000);
  EXPECT_EQ(fEditor->CurrentLine(), 2);
  fEditor->GoToLine(0);
  Press("x");
  EXPECT_EQ(fEditor->Text(), "x" + text);
  const std::string cut = "a\u00A0b\u202Fc\xFF\xE3\x81 d\u2028e\n\u00A0f";
  fEditor->SetText(cut);
  for (const char* key : {"Ctrl+A", "Ctrl+X"}) Press(key);
  EXPECT_EQ(fEditor->Text(), "");
  Press("Ctrl+V");
  EXPECT_EQ(fEditor->Text(), cut) << "also by way of the clipboard";
}

TEST_F(TextView, InputMethodReplacesWhatItNames) {
  fEditor->SetText("かな\nabc");
  const auto replace = [this](const char* text, int from, int length) {
    hands::compose_over(*fWindow, text, from, length);
    hands::settle(*fWindow);
  };
  for (const char* key : {"Ctrl+Home", "End"}) Press(key);
  replace("仮名", -2, 2);
  EXPECT_EQ(fEditor->Text(), "仮名\nabc");
  replace("", -1, 1);
  EXPECT_EQ(fEditor->Text(), "仮\nabc");
  replace("x", 1, 1000);
  EXPECT_EQ(fEditor->Text(), "仮\nx") << "bounded by the text";
}
