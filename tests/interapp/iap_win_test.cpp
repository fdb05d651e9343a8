#include "interapp/iap_win.h"

#include "interapp/inter_app_prefs.h"
#include "platform/app/application.h"
#include "platform/app/roster.h"
#include "platform/interface/menu_field.h"
#include "platform/kernel/ports.h"
#include "plugin/message_codes.h"
#include "tests/support/hands.h"
#include "tests/support/messages.h"
#include "tests/support/own_looper.h"

#include <sys/stat.h>

using testing::ElementsAre;

namespace {

/** An application of the family: applies change notices as the manager does. */
struct Family : BLooper {
  explicit Family(const char* signature) : BLooper(signature), fSignature(signature) {
    fPrefs.SetAppSignatureRef(fSignature);
    fPrefs.AddItem(new TIAPItemAccKeyFormat);
    fPrefs.AddItem(new TIAPItemFlatToolBar);
    be_roster->AddName(fSignature, BMessenger(this), {kMsgIAPChanged});
  }
  ~Family() override { be_roster->RemoveName(fSignature); }
  void MessageReceived(BMessage* message) override {
    if (message->what == kMsgIAPChanged) fPrefs.SetValue(*message);
  }
  std::string Format() {
    std::string format;
    fPrefs.GetString("AccKeyFormat", &format);
    return format;
  }
  bool IsFlat() {
    bool isFlat = false;
    fPrefs.GetBool("FlatToolBar", &isFlat);
    return isFlat;
  }
  const char* const fSignature;
  TInterAppPrefs fPrefs;
};

struct HandDrivenWindow : TIAPWin {
  explicit HandDrivenWindow(bool* isClosed) : fIsClosed(isClosed) { SetRunsOnShow(false); }
  ~HandDrivenWindow() override { *fIsClosed = true; }

private:
  bool* const fIsClosed;
};

struct CommonWindow : testing::Test {
  CommonWindow() {
    for (const auto& family : {fFirst.get(), fSecond.get()}) family->Run();
  }
  ~CommonWindow() override {
    if (fWindow && !fIsClosed && fWindow->Lock()) fWindow->Quit();
    fFirst.reset();
    fSecond.reset();
    hands::wait_for_display();
  }
  /** A window whose messages the test delivers, with the controls of both applications. */
  void Open() {
    fWindow = new HandDrivenWindow(&fIsClosed);
    fWindow->Show();
    EXPECT_TRUE(hands::until([this] { return fWindow->Port() != 0; }));
    for (Family* family : {fFirst.get(), fSecond.get()}) EXPECT_EQ(family->fPrefs.ShowWindow({}), B_OK);
    EXPECT_TRUE(Until([this] { return fWindow->FindView("FlatToolBar") && port_count(fWindow->Port()) == 0; }));
    Settle();
  }
  void Settle() {
    for (int quiet = 0; quiet < 3; ++quiet) {
      hands::wait_for_display();
      if (fIsClosed) return;
      if (fWindow->DeliverAll() > 0) quiet = -1;
    }
  }
  bool Until(const std::function<bool()>& isSo) {
    return hands::until([&] {
      Settle();
      return isSo();
    });
  }
  void Click(const char* view) {
    hands::click(*fWindow, view, {8, 8});
    Settle();
  }

  const ScratchFolder fFolder;
  const int fSet = setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
  OwnLooper<Family> fFirst{new Family("application/x-vnd.test-first")};
  OwnLooper<Family> fSecond{new Family("application/x-vnd.test-second")};
  HandDrivenWindow* fWindow = nullptr;
  bool fIsClosed = false;
};

} // namespace

TEST_F(CommonWindow, NotifiesEveryApplicationThatHasThePreference) {
  const OwnLooper<Family> withoutControls{new Family("application/x-vnd.KOREVA-third")};
  withoutControls->Run();
  Open();
  Click("FlatToolBar");
  EXPECT_TRUE(Until([&] { return !withoutControls->IsFlat(); }));
  EXPECT_TRUE(Until([this] { return !fFirst->IsFlat() && !fSecond->IsFlat(); }));
  fWindow->FindView("AccKeyFormat")->MakeFocus();
  Settle();
  hands::press(*fWindow, "Down");
  Settle();
  EXPECT_TRUE(Until([this] { return fFirst->Format() == "a) " && fSecond->Format() == "a) "; }));
  // The notice comes before the value is on the disk.
  EXPECT_TRUE(hands::until([] { return Family("application/x-vnd.test-third").Format() == "a) "; }))
      << "stored for those who start later";
  hands::press(*fWindow, "Return"); // OK
  EXPECT_TRUE(Until([this] { return fIsClosed; }));
  EXPECT_EQ(fFirst->Format(), "a) ");
}

TEST_F(CommonWindow, CancelRestoresAndDefaultResets) {
  fFirst->fPrefs.SetString("AccKeyFormat", "<a> ");
  Open();
  auto* const field = static_cast<BMenuField*>(fWindow->FindView("AccKeyFormat"));
  EXPECT_THAT(field->Choices(), ElementsAre("(None)", "a) ", "a\u30fb", "a - ", "<a> ", "Select ..."));
  EXPECT_EQ(field->Value(), 4);
  Click("FlatToolBar");
  Click("Default");
  EXPECT_TRUE(Until([this] { return fFirst->Format().empty() && fFirst->IsFlat(); }));
  Click("FlatToolBar");
  Click("Cancel");
  EXPECT_TRUE(fIsClosed);
  EXPECT_TRUE(hands::until([this] { return fFirst->Format() == "<a> " && fFirst->IsFlat(); }));
  EXPECT_LT(find_port(kIAPPortName), 0);
}

TEST_F(CommonWindow, AFormatOfOnesOwnIsTyped) {
  const OwnLooper<BApplication> app(new BApplication("application/x-vnd.test")); // knows the windows
  Open();
  EXPECT_EQ(hands::focused_view(*fWindow), "OK") << "not the button that resets everything";
  fWindow->FindView("AccKeyFormat")->MakeFocus();
  Settle();
  hands::press(*fWindow, "End");
  Settle();
  BWindow& input = hands::wait_for_window("Accelerator Format:");
  EXPECT_EQ(fFirst->Format(), "");
  for (const char* key : {"[", "a", "]", "Return"}) hands::press(input, key);
  EXPECT_TRUE(Until([this] { return fFirst->Format() == "[a]"; }));
  auto* const field = static_cast<BMenuField*>(fWindow->FindView("AccKeyFormat"));
  EXPECT_EQ(field->Choices()[static_cast<size_t>(field->Value())], "[a]");
}

TEST_F(CommonWindow, GarbageThroughThePortChangesNothing) {
  Open();
  EXPECT_EQ(write_port(fWindow->Port(), 0, "nonsense", 8), B_OK);
  BMessage odd = message_of(kMsgIAPControls, "FlatToolBar", "text", "half", message_of(0, "IAP:Kind", 7));
  fFirst->fPrefs.SendMessage(fWindow->Port(), &odd);
  Until([this] { return port_count(fWindow->Port()) == 0; });
  Click("FlatToolBar");
  EXPECT_TRUE(Until([this] { return !fFirst->IsFlat(); }));
}

TEST_F(CommonWindow, IsClosedByItsMakerAloneUnlessForcedAndMadeAgain) {
  for (const bool isForced : {false, true, false}) {
    EXPECT_EQ(fFirst->fPrefs.ShowWindow({100, 100, 200, 200}), B_OK);
    EXPECT_EQ(fSecond->fPrefs.ShowWindow({}), B_OK);
    EXPECT_EQ(fSecond->fPrefs.CloseWindow(false), -1);
    EXPECT_GE(find_port(kIAPPortName), 0);
    EXPECT_EQ((isForced ? *fSecond : *fFirst).fPrefs.CloseWindow(isForced), 0);
    EXPECT_TRUE(hands::until([] { return find_port(kIAPPortName) < 0; }));
    EXPECT_EQ(fSecond->fPrefs.CloseWindow(true), 0) << "nothing is open";
  }
  EXPECT_EQ(fFirst->fPrefs.ShowWindow({100, 100, 200, 200}), B_OK);
  fFirst->fPrefs.EndWindow();
  EXPECT_LT(find_port(kIAPPortName), 0);
}

TEST_F(CommonWindow, ItsEndDoesNotWaitForRoomInItsQueue) {
  Open();
  while (fWindow->PostMessage(kMsgWait) == B_OK) continue;
  BMessage activate(kMsgIAPActivate);
  fFirst->fPrefs.SendMessage(fWindow->Port(), &activate);
  EXPECT_TRUE(hands::until([this] { return port_count(fWindow->Port()) == 0; })) << "the port's thread waits for room";
  ASSERT_TRUE(fWindow->Lock());
  fWindow->Quit();
  EXPECT_LT(find_port(kIAPPortName), 0);
}

TEST_F(CommonWindow, ValuesAreReadAndWrittenByNameAndType) {
  TInterAppPrefs& prefs = fFirst->fPrefs;
  bool flat = false;
  EXPECT_EQ(prefs.GetBool("AccKeyFormat", &flat), B_BAD_TYPE);
  EXPECT_EQ(prefs.SetBool("Unknown", true), B_NAME_NOT_FOUND);
  EXPECT_EQ(prefs.SetBool("FlatToolBar", false), B_OK);
  EXPECT_FALSE(fFirst->IsFlat() || Family("application/x-vnd.test-third").IsFlat());
  BMessage notice = message_of(kMsgIAPChanged, "IAP:Value", "a - ");
  EXPECT_EQ(prefs.SetValue(notice), -1) << "of nothing";
  notice.AddString("IAP:SrcIAPItem", "AccKeyFormat");
  EXPECT_EQ(prefs.SetValue(notice), B_OK);
  const char* const item = "AccKeyFormat";
  for (const BMessage& refused :
       {message_of(kMsgIAPChanged, "IAP:SrcIAPItem", item, "IAP:Value", true),
        message_of(kMsgIAPChanged, "IAP:SrcIAPItem", item, "IAP:Value", std::string(1 << 20, 'x'))})
    EXPECT_NE(prefs.SetValue(refused), B_OK);
  EXPECT_EQ(fFirst->Format(), "a - ");
}

TEST_F(CommonWindow, IsClosedAgainIfItGetsNoPort) {
  const OwnLooper<BApplication> app(new BApplication("application/x-vnd.test")); // knows the windows
  const std::string folder = std::string(getenv("XDG_RUNTIME_DIR")) + "/koreva";
  EXPECT_EQ(chmod(folder.c_str(), 0755), 0); // no longer private
  EXPECT_NE(fFirst->fPrefs.ShowWindow({}), B_OK);
  hands::wait_for_display();
  EXPECT_EQ(hands::windows_titled("KOREVA Common Preferences").size(), 0);
  EXPECT_EQ(chmod(folder.c_str(), 0700), 0);
}
