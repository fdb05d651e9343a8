#include "interapp/iap_win.h"
#include "interapp/inter_app_prefs.h"
#include "platform/app/message.h"
#include "platform/kernel/ports.h"
#include "plugin/message_codes.h"
#include "tests/processes/peer.h"
#include "tests/support/own_looper.h"
#include "tests/support/testing.h"

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

/** The port of a window whose queue has room for one message. */
struct IAPPort : testing::Test {
  IAPPort() {
    fManager.Resume();
    EXPECT_TRUE(eventually([&] { return fManager.Port() != 0; }));
  }
  void Send(uint32 code) const {
    const std::vector<char> flat = BMessage(code).Flatten();
    EXPECT_EQ(write_port(fManager.Port(), 0, flat.data(), flat.size()), B_OK);
  }
  /** One message is in the window's queue, and one is being delivered. */
  void SendUntilTheWindowIsBusy() {
    for (int i = 0; i < 3; ++i) Send(kMsgIAPActivate);
    EXPECT_TRUE(eventually([&] { return fWindow->CountMessages() == 1 && port_count(fManager.Port()) <= 1; }));
  }
  const OwnLooper<Taker> fWindow{new Taker};
  TIAPPortManager fManager{BMessenger(fWindow.get())};
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

TEST_F(IAPPort, EndsWhileItsWindowReadsNothing) {
  SendUntilTheWindowIsBusy();
  fManager.Stop(); // returns
}

TEST_F(IAPPort, LosesNothingWhileItsWindowIsBusy) {
  SendUntilTheWindowIsBusy();
  // An attempt waits for 50 ms. A test that runs on before it has given up notices nothing, but never fails.
  const bigtime_t busySinceUs = system_time();
  EXPECT_TRUE(eventually([&] { return system_time() - busySinceUs > 150000; }));
  EXPECT_TRUE(eventually([&] {
    fWindow->DeliverAll();
    return fWindow->fActivations == 3;
  }));
}

TEST_F(IAPPort, PassesOnOnlyWhatTheFamilySends) {
  fWindow->Run();
  for (const uint32 code : {kMsgIAPChanged, kMsgIAPActivate}) Send(code);
  EXPECT_TRUE(eventually([&] { return fWindow->fActivations == 1; }));
  EXPECT_EQ(fWindow->fOthers, 0);
}
