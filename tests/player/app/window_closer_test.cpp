#include "player/app/window_closer.h"

#include "tests/support/messages.h"
#include "tests/support/own_looper.h"

namespace {

struct WindowCloser : testing::Test {
  void Answer(bool agrees) { fCloser.TakeAnswer(message_of(B_REPLY, "result", agrees)); }
  static BMessenger To(const OwnLooper<BLooper>& window) { return BMessenger(window.get()); }

  OwnLooper<BLooper> fPlayer{new BLooper};
  OwnLooper<BLooper> fFirst{new BLooper};
  OwnLooper<BLooper> fSecond{new BLooper};
  TWindowCloser fCloser{BMessenger(fPlayer.get())};
};

} // namespace

TEST_F(WindowCloser, ThePlayerEndsOnceAllHaveAgreedAndNotBefore) {
  Answer(true);
  EXPECT_FALSE(fCloser.TakeConsent()) << "no window was asked";
  fCloser.Ask({To(fFirst), To(fSecond)});
  fCloser.TakeAnswer(BMessage(B_REPLY)); // to something else
  Answer(false);
  EXPECT_FALSE(fCloser.IsClosing());
  fCloser.Ask({To(fFirst), To(fSecond)});
  Answer(true);
  fCloser.CheckWindows();
  EXPECT_FALSE(fCloser.TakeConsent());
  Answer(true);
  EXPECT_TRUE(fCloser.TakeConsent());
  EXPECT_FALSE(fCloser.TakeConsent()) << "once";
  EXPECT_TRUE(fCloser.IsClosing());
}

TEST_F(WindowCloser, AWindowThatGoesWithoutAnAnswerIsNotWaitedFor) {
  fCloser.Ask({To(fFirst), To(fSecond)});
  const BMessenger first = To(fFirst);
  fFirst.reset();
  fCloser.CheckWindows();
  EXPECT_FALSE(fCloser.TakeConsent()) << "the other one is still there";
  fSecond.reset();
  fCloser.CheckWindows();
  EXPECT_TRUE(fCloser.TakeConsent());
  fCloser.CheckWindows();
  EXPECT_FALSE(fCloser.TakeConsent()) << "once";
  fCloser.Ask({first});
  EXPECT_TRUE(fCloser.TakeConsent()) << "without a window to ask at once";
}
