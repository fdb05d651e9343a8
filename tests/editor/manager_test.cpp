#include "common/app_info.h"
#include "document/editor_view.h"
#include "editor/shift_amount.h"
#include "editor/vesmo_e_comm_man.h"
#include "lyrics/reaction_time.h"
#include "platform/app/looper_lock.h"
#include "tests/support/editor_world.h"
#include "tests/support/hands.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"

namespace {

constexpr const char* kAbout = "About Vesmo Editor";
constexpr const char* kEditor = "Untitled - Vesmo Editor";
constexpr const char* kFineTag = "Shift all time tags";

using hands::windows_titled;

/** The windows run on their threads; the test delivers the manager's messages one by one. */
struct ManagerByHand : EditorWorld {
  ManagerByHand() {
    gIAP->SetString("AccKeyFormat", "a - ");
    gAppPrivacy->UpdateLanguageInfos();
    fManager = new TVesmoECommMan;
  }
  ~ManagerByHand() override {
    if (fManager->Lock()) fManager->Quit();
    hands::wait_for_display();
    EXPECT_TRUE(windows_titled(kAbout).empty());
    EXPECT_TRUE(windows_titled(kFineTag).empty());
  }
  /** The number of messages that this causes for the manager. */
  int32 Send(const BMessage& message) {
    fManager->PostMessage(&message);
    return fManager->DeliverAll();
  }
  /** Through the application, by the editor's signature. */
  void Tell(const BMessage& message) {
    BMessenger(gAppSignature).SendMessage(&message);
    wait_for(BMessenger(fHost));
  }
  BWindow& Only(const char* title) {
    const std::vector<BWindow*> found = windows_titled(title);
    EXPECT_EQ(found.size(), 1U) << title;
    return *found.front();
  }
  static bool Becomes(bool isShown, BWindow& window) {
    return hands::until([&] { return hands::is_shown(window) == isShown; });
  }
  /** Lyrics that were found for the song. */
  BMessage OfferOf(const std::string& name, BWindow& editor) const {
    const TLooperLock lock(&editor);
    const auto* const view = static_cast<TVesmoEView*>(editor.FindView("VesmoEditorView"));
    return message_of(kMsgOfferSongLyrics, "refs", ref_of(fFolder.Write(name, "sung\n")), "Document",
                      view->DocumentNumber());
  }
  TVesmoECommMan* fManager;
};

} // namespace

TEST_F(ManagerByHand, AboutWindowStandsBesideTheEditor) {
  Send(message_of(kMsgOpenAbout, "BesideDlg", true, "WinFrame", BRect{0, 120, 200, 300}));
  BWindow& about = Only(kAbout);
  EXPECT_TRUE(Becomes(true, about));
  const TLooperLock lock{BMessenger(&about)};
  EXPECT_GT(about.Frame().left, 200);
  EXPECT_EQ(about.Frame().top, 120);
}

TEST_F(ManagerByHand, FineTagWindowSaysWhichLinesItShiftsAndGoesWithItsEditor) {
  Send(BMessage(kMsgFineTimeTag));
  EXPECT_TRUE(windows_titled(kFineTag).empty()) << "without an editor there is nothing to shift";
  Send(BMessage(kMsgOpenMain));
  Send(message_of(kMsgFineTimeTag, "First", 1, "Count", INT32_MAX, "Document", 0));
  Only("Shift time tags from line 2");
  Send(message_of(kMsgFineTimeTag, "First", 1, "Count", 2, "Document", 0));
  BWindow& shift = Only("Shift time tags of lines 2–3");
  Send(message_of(kMsgFineTimeTag, "First", 1, "Count", 2));
  EXPECT_EQ(&Only(kFineTag), &shift);
  EXPECT_TRUE(Becomes(true, shift));
  BWindow& editor = Only(kEditor);
  Send(OfferOf("a.lrc", editor));
  wait_for(BMessenger(&editor));
  EXPECT_EQ(windows_titled(kEditor).size(), 1U) << "the shift that is being typed is for the open document";
  hands::press(shift, "Escape");
  EXPECT_TRUE(Becomes(false, shift));
  Send(OfferOf("a.lrc", editor));
  EXPECT_TRUE(hands::until([&] { return windows_titled(kEditor).empty(); }));
  BMessage quit(B_QUIT_REQUESTED);
  BMessenger(&editor).SendMessage(&quit);
  EXPECT_TRUE(hands::until([&] {
    fManager->DeliverAll();
    return windows_titled(kFineTag).empty();
  }));
}

TEST_F(ManagerByHand, ManagerKeepsRunningWhileItReportsThatThereAreNoPreferences) {
  Send(BMessage(kMsgPreparePref));
  int32 delivered = 0;
  EXPECT_TRUE(hands::until([&] { return (delivered += fManager->DeliverAll()) > 0; })) << "the companion has not come";
  EXPECT_NE(hands::wait_for_question().text.find("VesmoD"), std::string::npos);
  Send(BMessage(kMsgPrepareAbout));
  EXPECT_TRUE(Becomes(true, Only(kAbout)));
  EXPECT_TRUE(hands::answer_with_key("Escape"));
}

TEST_F(ManagerByHand, PreferencesAreTheCompanionsToShow) {
  const OwnLooper<Keeping<BLooper>> companion(new Keeping<BLooper>);
  Send(BMessage(kMsgPreparePref)); // the request may come before the companion
  Send(message_of(kMsgPartnerConnects, "CSCommMan", companion.get()));
  Send(BMessage(kMsgPreferences));
  Send(BMessage(kMsgStampHint)); // for that window
  companion->DeliverAll();
  EXPECT_EQ(companion->Codes(), (std::vector<uint32>{kMsgOpenPref, kMsgOpenPref, kMsgStampHint}));
  const BMessage& request = companion->fReceived.front();
  EXPECT_EQ(field<bool>(request, "BesideDlg"), false);
  EXPECT_FALSE(request.HasField("WinFrame"));
}

TEST_F(ManagerByHand, ChangesOfTheCompanionReachTheSettings) {
  int32 offsetMs = 0;
  for (const uint32 code : {kMsgStayOnTop, kMsgDefaultStatBar, kMsgToolBar, kMsgAppearance, kMsgPollInterval,
                            kMsgStatBarStr, kMsgEncoding, kMsgLineEnds, kMsgReadEncoding, kMsgTimeOffset}) {
    Send(message_of(code, "TmDf", ++offsetMs));
    EXPECT_EQ(gPref->Values()->timeOffsetMs, offsetMs) << std::hex << code;
  }
  Send(message_of(kMsgOptions, "RnwC", true));
  EXPECT_TRUE(gPref->Values()->renewsCopies);
  Send(BMessage(kMsgOpenMain));
  BWindow& editor = Only(kEditor);
  Send(message_of(kMsgKeys, "save", "F9"));
  EXPECT_TRUE(hands::until([&] {
    const auto items = hands::menu_lines(editor, {"F - File"});
    return std::ranges::any_of(items, [](const auto& item) { return item.shortcut == "F9"; });
  }));
}

TEST_F(ManagerByHand, AnotherLanguageFileIsLoadedAtOnce) {
  Send(message_of(kMsgLanguageChanged, "LLTF", "")); // from a file next to the plug-in to the built-in texts
  EXPECT_FALSE(gAppPrivacy->ShouldBeLanguageChanged());
  EXPECT_EQ(Send(BMessage(kMsgLanguageNode)), 2) << "a change on the disk is one of the language";
}

TEST_F(ManagerByHand, SharedPreferencesArriveThroughTheApplication) {
  Tell(message_of(kMsgIAPChanged, "IAP:SrcIAPItem", "FlatToolBar", "IAP:Value", false));
  EXPECT_EQ(fManager->DeliverAll(), 1) << "by the filter alone";
  bool flat = true;
  gIAP->GetBool("FlatToolBar", &flat);
  EXPECT_FALSE(flat);
}

TEST_F(ManagerByHand, SharedPreferencesThatCannotBeStoredAreReportedOnce) {
  const std::string shared = fFolder.File("KOREVA/Shared");
  std::filesystem::create_directories(shared);
  std::filesystem::permissions(shared, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  for (const bool isFlat : {false, true}) {
    Tell(message_of(kMsgIAPChanged, "IAP:SrcIAPItem", "FlatToolBar", "IAP:Value", isFlat));
    fManager->DeliverAll();
  }
  std::filesystem::permissions(shared, std::filesystem::perms::owner_all);
  EXPECT_THAT(hands::wait_for_question().text, testing::StartsWith("The settings could not be saved."));
  EXPECT_TRUE(hands::answer_with_key("Escape"));
  EXPECT_EQ(hands::question_now().text, "") << "the second failure";
  Tell(message_of(kMsgIAPChanged, "IAP:SrcIAPItem", "FlatToolBar", "IAP:Value", true));
  fManager->DeliverAll();
}

TEST_F(ManagerByHand, LastChangeOfASharedPreferenceArrivesAlsoWhenTheQueueIsFull) {
  while (fManager->PostMessage('none') == B_OK) continue;
  for (const char* format : {"a) ", "a\u30fb"})
    Tell(message_of(kMsgIAPChanged, "IAP:SrcIAPItem", "AccKeyFormat", "IAP:Value", format));
  fManager->DeliverAll();
  std::string format;
  gIAP->GetString("AccKeyFormat", &format);
  EXPECT_EQ(format, "a\u30fb");
}

TEST_F(ManagerByHand, FilesForTheEditorAreForwardedAndThoseForThePlayerAreNot) {
  const BMessage refs(B_REFS_RECEIVED);
  fHost->PostMessage(&refs);
  wait_for(BMessenger(fHost));
  EXPECT_EQ(fManager->CountMessages(), 0) << "the player's own";
  Tell(refs);
  Tell(BMessage(kMsgCloseMain)); // not offered by that name
  EXPECT_EQ(fManager->DeliverAll(), 1);
  EXPECT_TRUE(Becomes(true, Only(kEditor)));
  Tell(BMessage(B_ABOUT_REQUESTED));
  fManager->DeliverAll();
  EXPECT_TRUE(Becomes(true, Only(kAbout)));
}

TEST_F(ManagerByHand, HelpThatIsNotInstalledIsNamed) {
  Send(BMessage(kMsgHelp));
  EXPECT_THAT(hands::wait_for_question().text, testing::EndsWith("/VesmoE.htm"));
  EXPECT_TRUE(hands::answer_with_key("Escape"));
}

TEST_F(ManagerByHand, ClosingWhatIsNotOpenAsksForNothingFurther) {
  for (const uint32 code : {kMsgCloseAbout, kMsgCloseFineTag, kMsgCloseCommonPref, kMsgCloseMain, kMsgMainClosed})
    EXPECT_EQ(Send(BMessage(code)), 1) << std::hex << code;
}

TEST(ShiftAmount, IsAWholeNumberWithinBounds) {
  for (const char* good : {"0", "-250", "+10", " 42 ", "2147483647", "-2147483647"})
    EXPECT_TRUE(is_shift_amount(good)) << good;
  for (const char* bad :
       {"", " ", "-", "1x", "1.5", "0x10", "2147483648", "-2147483648", "99999999999999999999", "１２", "1 2"})
    EXPECT_FALSE(is_shift_amount(bad)) << bad;
}
