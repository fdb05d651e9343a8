#include "tests/support/messages.h"
#include "tests/support/with_window.h"
#include "toolkit/simple_input_win.h"

#include "platform/interface/font.h"
#include "tests/support/keeping.h"

namespace {

struct ShiftWin : TSimpleInputWin {
  ShiftWin() {
    SetLabels({"Shift", "Shift by (ms):", "G - Go", "C - Cancel"});
    SetMessage(BMessage('fttr'), BMessenger(fReceiver.get()));
    SetCheck([](const std::string& text) {
      return text.find_first_not_of("-0123456789") == std::string::npos ? "" : "Please type a number.";
    });
  }
  const OwnLooper<Keeping<BLooper>> fReceiver{new Keeping<BLooper>};
};

} // namespace

struct SimpleInputWin : WithWindow<ShiftWin> {
  void Type(const std::string& text) {
    for (const char c : text) Press(std::string(1, c));
  }
  void ShowAgain() {
    fWindow->BringUp();
    hands::settle(*fWindow);
  }
  /** The texts sent since the last call. */
  std::vector<std::string> Sent() {
    fWindow->fReceiver->DeliverAll();
    std::vector<std::string> texts;
    for (const BMessage& message : fWindow->fReceiver->Taken())
      if (message.what == 'fttr') texts.push_back(field<std::string>(message, "_SmplIptData").value_or("none"));
    return texts;
  }
  using Texts = std::vector<std::string>;
};

TEST_F(SimpleInputWin, ShownAgainTheLastTextIsSelected) {
  Type("12");
  Press("Return");
  ShowAgain();
  Press("Return");
  ShowAgain();
  Type("7");
  Press("Return");
  EXPECT_EQ(Sent(), (Texts{"12", "12", "7"})) << "typing replaces the selected text";
}

TEST_F(SimpleInputWin, EveryWayToCancelHidesItAndSendsNothing) {
  Type("5");
  const std::function<void()> ways[] = {[this] { Press("Escape"); }, [this] { Press("Alt+C"); },
                                        [this] { Press("Tab", "Return"); },
                                        [this] {
                                          hands::click(*fWindow, "Cancel", {10, 10});
                                        },
                                        [this] { hands::press_close_button(*fWindow); }};
  for (const auto& cancel : ways) {
    ShowAgain();
    EXPECT_EQ(hands::focused_view(*fWindow), "Input");
    cancel();
    // An accelerator animates its button before it acts.
    EXPECT_TRUE(hands::until(*fWindow, [this] { return !hands::is_shown(*fWindow); })) << &cancel - ways;
  }
  EXPECT_EQ(Sent(), Texts{});
  ShowAgain();
  Press("Alt+G");
  EXPECT_TRUE(hands::until(*fWindow, [this] { return !hands::is_shown(*fWindow); }));
  EXPECT_EQ(Sent(), Texts{"5"});
}

TEST_F(SimpleInputWin, InvalidTextIsNotSentAndReported) {
  const float height = fWindow->Bounds().Height();
  Type("1x");
  Press("Return");
  EXPECT_TRUE(hands::is_shown(*fWindow));
  EXPECT_EQ(hands::label_text(*fWindow, "Hint"), "Please type a number.");
  EXPECT_GT(fWindow->Bounds().Height(), height) << "nothing is covered";
  Type("y");
  Press("Return");
  EXPECT_EQ(hands::label_text(*fWindow, "Hint"), "Please type a number.") << "once";
  Type("3");
  Press("Return");
  EXPECT_EQ(Sent(), Texts{"3"}) << "the invalid text was selected";
  ShowAgain();
  EXPECT_EQ(fWindow->Bounds().Height(), height);
}

TEST_F(SimpleInputWin, WindowFitsNewLabels) {
  const std::string label = "Alle Zeitmarken verschieben um (Millisekunden):", button = "L - Los geht es jetzt sofort";
  fWindow->SetLabels({"Verschieben", label, button, "C - Abbrechen"});
  hands::settle(*fWindow);
  EXPECT_GE(hands::control_frame(*fWindow, "InputLabel").Width() + 1, be_plain_font->StringWidth(label));
  const BRect go = hands::control_frame(*fWindow, "Go");
  EXPECT_GT(go.Width(), be_plain_font->StringWidth(button));
  EXPECT_LT(go.right, fWindow->Bounds().right);
  EXPECT_EQ(hands::spoken(*fWindow, "Input").name, label);
}
