/** Closing while a tap test waits for an unresponsive sound server. A blocked close hangs these tests until the alarm
    ends them. */

#include "companion/prefs/click_track.h"
#include "tests/companion/prefs/pref_world.h"
#include "tests/support/sound_server.h"

#include "tests/support/waiter.h"

namespace {

struct ClickCounter : BLooper {
  void MessageReceived(BMessage* message) override { fClicks += message->what == kMsgClick; }
  std::atomic<int> fClicks = 0;
};

} // namespace

struct SilentSoundServer : PrefWindow {
  /** Less than the sound library's own time-out of 30 s. */
  SilentSoundServer() { alarm(25); }
  ~SilentSoundServer() override { alarm(0); }
};

TEST_F(SilentSoundServer, ThatNeverAnswersDoesNotBlockClosing) {
  SoundServer server;
  server.Freeze();
  Open(open_click_output);
  SelectTab(kTiming);
  Click("StartTest");
  EXPECT_TRUE(hands::until([] { return is_asleep(thread_named("Tap test")); }));
  ASSERT_TRUE(fWindow->Lock());
  std::exchange(fWindow, nullptr)->Quit();
}

TEST_F(SilentSoundServer, ThatFreezesDuringATapTestDoesNotBlockItsEnd) {
  SoundServer server;
  const OwnLooper<ClickCounter> listener(new ClickCounter);
  listener->Run();
  {
    TClickTrack track(BMessenger(listener.get()), 1, open_click_output);
    track.Resume();
    EXPECT_TRUE(hands::until([&] { return listener->fClicks > 0; }));
    server.Freeze();
  }
  EXPECT_LT(listener->fClicks, TClickTrack::kClicks);
}
