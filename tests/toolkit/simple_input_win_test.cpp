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
  /** True once it is closed: an accelerator animates its button before it acts. */
  bool Closes() {
    return hands::until(*fWindow, [this] { return !IsOpen(); });
  }
  bool IsOpen() const { return hands::is_shown(*fWindow); }
  using Texts = std::vector<std::string>;
};

TEST_F(SimpleInputWin, ShownAgainTheLastTextIsSelected) {
  Type("12");
  Press("Return");
  ShowAgain();
  Press("Return", "Escape");
  EXPECT_EQ(Sent(), (Texts{"12", "12"}));
  ShowAgain();
  Type("7");
  Press("Return");
  EXPECT_EQ(Sent(), Texts{"7"}) << "typing replaces the selected text";
}

TEST_F(SimpleInputWin, EveryWayToCancelHidesItAndSendsNothing) {
  Type("5");
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Escape", [this] { Press("Escape"); }},
      {"letter", [this] { Press("Alt+C"); }},
      {"mouse",
       [this] {
         hands::click(*fWindow, "Cancel", {10, 10});
       }},
      {"close button", [this] { hands::press_close_button(*fWindow); }},
  };
  for (const auto& [way, cancel] : ways) {
    ShowAgain();
    cancel();
    EXPECT_TRUE(Closes()) << way;
  }
  EXPECT_EQ(Sent(), Texts{});
}

TEST_F(SimpleInputWin, AcceleratorsAndTabReachTheButtons) {
  Type("1");
  Press("Alt+G");
  EXPECT_TRUE(Closes());
  EXPECT_EQ(Sent(), Texts{"1"});
  ShowAgain();
  Press("Tab");
  EXPECT_EQ(hands::focused_view(*fWindow), "Cancel");
  Press("Return");
  EXPECT_FALSE(IsOpen()) << "Return presses the focused button";
  ShowAgain();
  EXPECT_EQ(hands::focused_view(*fWindow), "Input");
  EXPECT_EQ(Sent(), Texts{});
}

TEST_F(SimpleInputWin, InvalidTextIsNotSentAndReported) {
  const float height = fWindow->Bounds().Height();
  Type("1x");
  Press("Return");
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(hands::label_text(*fWindow, "Hint"), "Please type a number.");
  EXPECT_GT(fWindow->Bounds().Height(), height) << "nothing is covered";
  Type("3");
  Press("Return");
  EXPECT_EQ(Sent(), Texts{"3"}) << "the invalid text was selected";
  ShowAgain();
  EXPECT_EQ(fWindow->Bounds().Height(), height);
}

TEST_F(SimpleInputWin, WindowFitsNewLabels) {
  fWindow->SetLabels({"Verschieben", "Alle Zeitmarken verschieben um (Millisekunden):", "L - Los geht es jetzt sofort",
                      "C - Abbrechen"});
  hands::settle(*fWindow);
  const BRect label = hands::control_frame(*fWindow, "InputLabel");
  EXPECT_GE(label.Width() + 1, be_plain_font->StringWidth("Alle Zeitmarken verschieben um (Millisekunden):"));
  const BRect go = hands::control_frame(*fWindow, "Go");
  EXPECT_GT(go.Width(), be_plain_font->StringWidth("L - Los geht es jetzt sofort"));
  EXPECT_LT(go.right, fWindow->Bounds().right);
  EXPECT_EQ(hands::spoken(*fWindow, "Input").name, "Alle Zeitmarken verschieben um (Millisekunden):");
}
