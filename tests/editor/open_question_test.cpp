/** What the rest of the program does while a question of the editor is open, and whether the editor works after it. An
    alarm ends the program on a deadlock. */

#include "editor/vesmo_e_comm_man.h"
#include "hostlink/sonivo_window.h"
#include "platform/interface/window.h"
#include "tests/support/editor_world.h"
#include "tests/support/hands.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"

using testing::Contains;

namespace {

constexpr unsigned kPatienceSeconds = 120;
constexpr int kMoreMovesThanAQueueHolds = 5000;

/** The window of that title; windows that keep their lock are skipped. */
BWindow* find_window(const std::string& title) {
  for (const BMessenger& address : be_app->WindowAddresses()) {
    if (address.LockTargetWithTimeout(10000) != B_OK) continue;
    auto* const window = static_cast<BWindow*>(address.Target(nullptr));
    const bool isIt = window->Title() == title;
    window->Unlock();
    if (isIt) return window;
  }
  return nullptr;
}

BWindow* wait_for(const std::string& title) {
  BWindow* window = nullptr;
  hands::until([&] { return (window = find_window(title)) && hands::is_shown(*window); });
  return window;
}

/** Manager, editor and the player's window run; the closing editor asks whether to save "a.lrc". */
struct OpenQuestion : EditorWorld {
  OpenQuestion() {
    alarm(kPatienceSeconds);
    gAppPrivacy->UpdateLanguageInfos();
    fPlayer->Show();
    hands::wait_for_display();
    fManager->Run();
    OpenFile(fFolder.Write("a.lrc", "[00:10]one\n"));
    fEditor = wait_for("a.lrc - Vesmo Editor");
    hands::press(*fEditor, "Delete"); // the tag
    hands::press_close_button(*fEditor);
    EXPECT_THAT(hands::wait_for_question().text, testing::HasSubstr("unsaved changes"));
  }
  ~OpenQuestion() override {
    fManager.reset();
    fPlayer.reset();
    hands::wait_for_display();
    alarm(0);
  }
  void Ask(uint32 code) { BMessenger(fManager.get()).SendMessage(code); }
  void OpenFile(const std::string& path) {
    const BMessage open = message_of(B_REFS_RECEIVED, "refs", ref_of(path));
    BMessenger(fManager.get()).SendMessage(&open);
  }
  void WaitForManager() { wait_for(BMessenger(fManager.get())); }

  OwnLooper<BWindow> fPlayer{new BWindow({100, 100, 299, 199}, "Sonivo - Song")};
  OwnLooper<TVesmoECommMan> fManager{new TVesmoECommMan};
  BWindow* fEditor = nullptr;
};

} // namespace

TEST_F(OpenQuestion, PlayerDraggedAroundMeanwhileFreezesNothing) {
  const BMessenger player(fPlayer.get());
  for (int i = 0; i < kMoreMovesThanAQueueHolds; ++i) player.SendMessage(B_WINDOW_MOVED);
  hands::move_by_hand(*fPlayer, 130, 140);
  wait_for(player); // it has handled its moves
  EXPECT_LT(fEditor->CountMessages(), 100);
  hands::press_close_button(*fEditor);
  hands::press_close_button(*fEditor);
  hands::wait_for_display();

  ASSERT_TRUE(hands::answer_with_key("Escape"));
  hands::wait_for_question(); // the close box was pressed once more
  ASSERT_TRUE(hands::answer_with_key("Escape"));
  hands::press(*fEditor, "Ctrl+S");
  EXPECT_TRUE(hands::until([&] { return fFolder.Read("a.lrc").starts_with("one\n"); })) << "the text is lost";
}

TEST_F(OpenQuestion, AboutPreferencesAndTheEditorItselfComeUpMeanwhile) {
  const OwnLooper<Keeping<BLooper>> companion(new Keeping<BLooper>);
  const BMessage greeting = message_of(kMsgPartnerConnects, "CSCommMan", companion.get());
  BMessenger(fManager.get()).SendMessage(&greeting);
  for (const uint32 code : {uint32{kMsgPrepareAbout}, uint32{kMsgPreferences}, uint32{kMsgOpenMain}}) Ask(code);
  EXPECT_NE(wait_for("About Vesmo Editor"), nullptr);
  WaitForManager();
  companion->DeliverAll();
  ASSERT_THAT(companion->Codes(), Contains(uint32{kMsgOpenPref}));
  EXPECT_EQ(field<BRect>(companion->fReceived.front(), "WinFrame"), fEditor->Frame());
  EXPECT_TRUE(hands::answer_with_key("Escape"));
}
