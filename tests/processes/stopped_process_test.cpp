#include "interapp/iap_win.h"
#include "interapp/inter_app_prefs.h"
#include "platform/app/message.h"
#include "platform/kernel/ports.h"
#include "plugin/message_codes.h"
#include "tests/processes/peer.h"
#include "tests/support/eventually.h"
#include "tests/support/own_looper.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

/** Another process owns the port of the common window. */
struct CommonWindowElsewhere : testing::Test {
  CommonWindowElsewhere() {
    setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    fPrefs.AddItem(new TIAPItemFlatToolBar);
    EXPECT_EQ(fPeer.Ask(std::string("port ") + kIAPPortName + " 3"), "ok");
  }
  ScratchFolder fFolder;
  TInterAppPrefs fPrefs;
  Peer fPeer;
};

/** Counts what it receives. */
struct Taker : BLooper {
  Taker() : BLooper("taker", B_NORMAL_PRIORITY, 1) {}
  void MessageReceived(BMessage* message) override {
    if (message->what == kMsgIAPActivate) ++fActivations;
    if (message->what == kMsgIAPChanged) ++fOthers;
  }
  std::atomic<int> fActivations{0};
  std::atomic<int> fOthers{0};
};

} // namespace

TEST_F(CommonWindowElsewhere, AStoppedProcessIsGivenUp) {
  EXPECT_EQ(fPrefs.ShowWindow({}), B_OK);
  fPeer.Stop();
  EXPECT_EQ(fPrefs.ShowWindow({}), B_ERROR);
  EXPECT_EQ(fPrefs.CloseWindow(true), B_TIMED_OUT);
  fPeer.Continue();
}

TEST_F(CommonWindowElsewhere, AProcessThatReadsNothingIsGivenUp) {
  EXPECT_EQ(fPrefs.ShowWindow({}), B_OK);
  EXPECT_EQ(fPrefs.ShowWindow({}), B_ERROR) << "its port is full";
}

TEST(IAPPort, EndsWhileItsWindowReadsNothing) {
  const OwnLooper<Taker> window(new Taker);
  TIAPPortManager manager{BMessenger(window.get())};
  manager.Resume();
  ASSERT_TRUE(eventually([&] { return manager.Port() != 0; }));
  const std::vector<char> flat = BMessage(kMsgIAPActivate).Flatten();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(write_port(manager.Port(), 0, flat.data(), flat.size()), B_OK);
  EXPECT_TRUE(eventually([&] { return window->CountMessages() == 1 && port_count(manager.Port()) <= 1; }));
  manager.Stop(); // returns
}

TEST(IAPPort, LosesNothingWhileItsWindowIsBusy) {
  const OwnLooper<Taker> window(new Taker);
  TIAPPortManager manager{BMessenger(window.get())};
  manager.Resume();
  ASSERT_TRUE(eventually([&] { return manager.Port() != 0; }));
  const std::vector<char> flat = BMessage(kMsgIAPActivate).Flatten();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(write_port(manager.Port(), 0, flat.data(), flat.size()), B_OK);
  snooze(150000); // busy for longer than an attempt waits
  EXPECT_TRUE(eventually([&] {
    window->DeliverAll();
    return window->fActivations == 3;
  }));
}

TEST(IAPPort, PassesOnOnlyWhatTheFamilySends) {
  const OwnLooper<Taker> window(new Taker);
  window->Run();
  TIAPPortManager manager{BMessenger(window.get())};
  manager.Resume();
  ASSERT_TRUE(eventually([&] { return manager.Port() != 0; }));
  for (const uint32 code : {kMsgIAPChanged, kMsgIAPActivate}) {
    const std::vector<char> flat = BMessage(code).Flatten();
    EXPECT_EQ(write_port(manager.Port(), 0, flat.data(), flat.size()), B_OK);
  }
  EXPECT_TRUE(eventually([&] { return window->fActivations == 1; }));
  EXPECT_EQ(window->fOthers, 0);
}
