#include "lyrics/reaction_time.h"
#include "platform/app/message_filter.h"
#include "platform/app/roster.h"
#include "plugin/app_privacy.h"
#include "plugin/vesmo_e_comm_man.h"
#include "tests/editor/editor_world.h"

#include <vector>

namespace {

/** Keeps what reaches its looper, and lets through what the test does not hold back. */
class Recorder : public BMessageFilter {
public:
  Recorder(std::vector<BMessage>* seen, uint32 heldBack) : BMessageFilter(0), fSeen(seen), fHeldBack(heldBack) {}
  filter_result Filter(BMessage* message, BHandler**) override {
    fSeen->push_back(*message);
    return message->what == fHeldBack ? B_SKIP_MESSAGE : B_DISPATCH_MESSAGE;
  }

private:
  std::vector<BMessage>* fSeen;
  const uint32 fHeldBack;
};

/** The manager without its thread and without a window; each test hands it its messages. */
class Routing : public EditorWorld {
protected:
  Routing() {
    gIAP->AddItem(new TIAPItemFlatToolBar);
    gAppPrivacy = new TAppPrivacy;
    gAppPrivacy->UpdateLanguageInfos();
    fManager = new TVesmoECommMan;
    fManager->Lock();
    fManager->AddCommonFilter(new Recorder(&fSeen, kMsgOpenAbout)); // the window itself is not wanted here
    fManager->Unlock();
  }
  ~Routing() override {
    fManager->Lock();
    fManager->Quit();
    delete std::exchange(gAppPrivacy, nullptr);
  }
  void Send(const BMessage& message) {
    fManager->PostMessage(&message);
    fManager->DeliverAll();
  }
  std::vector<uint32> Codes() const {
    std::vector<uint32> codes;
    for (const BMessage& message : fSeen) codes.push_back(message.what);
    return codes;
  }
  TVesmoECommMan* fManager;
  std::vector<BMessage> fSeen;
};

void expect_no_window_beside(const BMessage& request) {
  bool beside = true;
  EXPECT_EQ(request.FindBool("BesideDlg", &beside), B_OK);
  EXPECT_FALSE(beside);
  EXPECT_FALSE(request.HasField("WinFrame"));
}

} // namespace

TEST_F(Routing, AboutIsAskedForWithoutOpeningTheEditor) {
  for (const uint32 code : {uint32{kMsgPrepareAbout}, uint32{B_ABOUT_REQUESTED}}) {
    fSeen.clear();
    Send(BMessage(code));
    ASSERT_EQ(Codes(), (std::vector<uint32>{code, kMsgOpenAbout}));
    expect_no_window_beside(fSeen.back());
  }
}

TEST_F(Routing, PreferencesAreTheCompanionsToShow) {
  auto* const companion = new BLooper("companion");
  std::vector<BMessage> told;
  companion->Lock();
  companion->AddCommonFilter(new Recorder(&told, kMsgOpenPref));
  companion->Unlock();
  BMessage greeting(kMsgPartnerConnects);
  greeting.AddPointer("CSCommMan", companion);
  Send(BMessage(kMsgPreparePref)); // the user may be quicker than the companion
  Send(greeting);
  Send(BMessage(kMsgPreferences));
  Send(BMessage(kMsgStampHint));
  companion->DeliverAll();
  ASSERT_EQ(told.size(), 3U);
  EXPECT_EQ(told.back().what, kMsgStampHint) << "which that window may show";
  EXPECT_EQ(told.front().what, kMsgOpenPref);
  expect_no_window_beside(told.front());
  companion->Lock();
  companion->Quit();
}

TEST_F(Routing, ChangesOfTheCompanionReachTheSettings) {
  int32 offsetMs = 0;
  for (const uint32 code : {uint32{'Spsc'}, uint32{'Sedr'}, uint32{'Splc'}, uint32{'Spac'}, uint32{'Ssic'},
                            uint32{'Sssr'}, uint32{'Spec'}, uint32{'Spcc'}, uint32{'Sprc'}, uint32{'Sptc'}}) {
    BMessage change(code);
    change.AddInt32("TmDf", ++offsetMs);
    Send(change);
    EXPECT_EQ(gPref->Values()->timeOffsetMs, offsetMs) << std::hex << code;
  }
}

TEST_F(Routing, AnotherLanguageFileIsLoadedAtOnce) {
  BMessage change(kMsgLanguageChanged);
  change.AddString("LLTF", ""); // from a file beside the plug-in to the built-in texts
  Send(change);
  EXPECT_FALSE(gAppPrivacy->ShouldBeLanguageChanged());
  fSeen.clear();
  Send(BMessage(kMsgLanguageNode));
  EXPECT_EQ(Codes(), (std::vector<uint32>{kMsgLanguageNode, kMsgLanguageChanged}));
}

TEST_F(Routing, SharedPreferencesArriveThroughTheApplication) {
  BMessage notice(kMsgIAPChanged);
  notice.AddString("IAP:SrcIAPItem", "FlatToolBar");
  notice.AddBool("IAP:Value", false);
  BMessage sync('nope');
  BMessage answer;
  fHost->PostMessage(&notice);
  BMessenger(fHost).SendMessage(&sync, &answer); // the application has passed it on
  fManager->DeliverAll();
  bool flat = true;
  gIAP->GetBool("FlatToolBar", &flat);
  EXPECT_FALSE(flat);
}

TEST_F(Routing, TheEditorsSignatureReachesTheManager) {
  const BMessenger editor("application/x-vnd.KOREVA-VesmoEditor");
  ASSERT_TRUE(editor.IsValid());
  EXPECT_EQ(editor, BMessenger(fManager));
}

TEST_F(Routing, ClosingWhatIsNotOpenIsNothing) {
  for (const uint32 code : {kMsgCloseAbout, kMsgCloseFineTag, kMsgCloseCommonPref, kMsgCloseMain, kMsgMainClosed}) {
    Send(BMessage(code));
  }
  EXPECT_EQ(fSeen.size(), 5U) << "and asks for nothing further";
}
