#include "platform/app/message.h"
#include "platform/interface/alert.h"
#include "platform/interface/window.h"
#include "tests/support/hands.h"
#include "tests/support/messages.h"
#include "tests/support/own_looper.h"

using testing::ElementsAre;

namespace {

BAlert* save_question() {
  auto* alert = new BAlert("Vesmo Editor", "\"song.lrc\" is not saved.", "Cancel(C)", "No(N)", "Yes(Y)");
  alert->SetShortcut(0, 'C');
  alert->SetShortcut(1, 'N');
  alert->SetShortcut(2, 'Y');
  alert->SetEscapeButton(0);
  return alert;
}

int32 asked(BAlert* alert, const std::function<void()>& answer) {
  auto result = std::async(std::launch::async, [alert] { return alert->Go(); });
  const hands::Question seen = hands::wait_for_question();
  EXPECT_EQ(seen.caption, "Vesmo Editor");
  EXPECT_EQ(seen.text, "\"song.lrc\" is not saved.");
  EXPECT_THAT(seen.buttons, ElementsAre("Cancel(C)", "No(N)", "Yes(Y)"));
  answer();
  return result.get();
}

} // namespace

TEST(Alert, EveryWayToAnswerReturnsTheIndexOfTheButton) {
  EXPECT_EQ(asked(save_question(), [] { hands::answer_with_button("No(N)"); }), 1);
  for (const auto& [key, place] : {std::pair{"N", 1}, {"C", 0}, {"Escape", 0}, {"Return", 2}}) {
    EXPECT_EQ(asked(save_question(), [key = key] { hands::answer_with_key(key); }), place) << key;
  }
}

TEST(Alert, AfterItsTimeOutItReturnsTheEscapeButtonAndStaysOpen) {
  EXPECT_EQ(save_question()->GoFor(1000), 0);
  hands::wait_for_question();
  EXPECT_TRUE(hands::answer_with_key("Escape"));
}

TEST(Alert, WindowThatAsksIsBlockedAndOthersAreNot) {
  struct Asker : BWindow {
    Asker() : BWindow({0, 0, 199, 99}, "asker") {}
    void MessageReceived(BMessage* message) override {
      if (message->what == 'ask_') fAnswer.set_value(save_question()->Go());
    }
    std::promise<int32> fAnswer;
  };
  const OwnLooper<Asker> asker(new Asker);
  const OwnLooper<BWindow> other(new BWindow({0, 0, 199, 99}, "other"));
  asker->Show();
  other->Show();
  auto answer = asker->fAnswer.get_future();
  asker->PostMessage('ask_');
  hands::wait_for_question();

  wait_for(BMessenger(other.get())); // it handles its messages
  EXPECT_TRUE(hands::is_shown(*other));

  hands::answer_with_key("Y");
  EXPECT_EQ(answer.get(), 2);
}
