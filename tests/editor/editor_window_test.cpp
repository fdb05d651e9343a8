#include "window/editor_window.h"

#include "lyrics/editor_view.h"
#include "tests/display/keeping.h"
#include "tests/editor/editor_world.h"

#include <gmock/gmock.h>
#include <sys/xattr.h>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

/** The editor's window, running as it does in the program. */
class EditorWindow : public EditorWorld {
protected:
  EditorWindow() {
    // The polling would never let the window come to rest.
    SetPref([](TPrefValues* values) { values->pollIntervalUs = 100000000; });
    fManager = new Keeping<BLooper>;
    fWindow = new TVesmoEWin(gExitState->fWindowFrame, fManager);
    fAddress = BMessenger(fWindow);
    fWindow->Show();
    Rest();
  }
  ~EditorWindow() override {
    if (fAddress.LockTarget()) fWindow->Quit();
    fManager->Lock();
    fManager->Quit();
  }

  /** Until the window has handled what it was sent, and what that led to. */
  void Rest() const {
    for (int i = 0; i < 3; ++i) {
      const BMessage question('rest');
      BMessage answer;
      fAddress.SendMessage(&question, &answer);
      hands::wait_for_display();
    }
  }
  void Press(const std::string& key) const {
    hands::press(*fWindow, key);
    Rest();
  }
  void PlayAt(int32 positionMs, const std::string& title = "song") {
    EditorWorld::PlayAt(positionMs, title, [this] {
      fAddress.LockTarget();
      fWindow->PostMessage(kMsgRefreshInfo, fWindow->FindView("VesmoEditorView"));
      fWindow->Unlock();
      Rest();
    });
  }
  void Open(const std::string& path) const {
    entry_ref ref;
    get_ref_for_path(path.c_str(), &ref);
    BMessage open(B_REFS_RECEIVED);
    open.AddRef("refs", &ref);
    fAddress.SendMessage(&open);
    Rest();
  }
  std::string Title() const {
    fAddress.LockTarget();
    const std::string title = fWindow->Title();
    fWindow->Unlock();
    return title;
  }
  std::string Status() const { return hands::label_text(*fWindow, "StatusBar"); }
  bool IsClosed() const {
    return hands::until([this] { return !fAddress.IsValid(); });
  }
  Keeping<BLooper>* fManager;
  TVesmoEWin* fWindow;
  BMessenger fAddress;
};

} // namespace

TEST_F(EditorWindow, OpensStampsAndSavesByteForByte) {
  PlayAt(1230);
  Open(fFolder.Write("a.lrc", "one\r\ntwo\r\n"));
  EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
  EXPECT_THAT(Status(), HasSubstr("UTF-8 <CR LF>"));
  Press("Space");
  Press("Space");
  EXPECT_THAT(Status(), EndsWith("Tag set at line 2"));
  Press("Ctrl+S");
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("[00:01:23]one\r\n[00:01:23]two\r\n\0", 31));
  EXPECT_THAT(Status(), EndsWith("Saved"));
  char type[64] = {};
  if (getxattr(fFolder.File("a.lrc").c_str(), "user.mime_type", type, sizeof type) > 0) {
    EXPECT_STREQ(type, "text/plain");
  }
}

TEST_F(EditorWindow, OpensTheLyricsOfThePlayingSong) {
  fHost->fEntries = {{fFolder.File("tune.mp3"), "tune"}};
  fFolder.Write("tune.lrc", "la la\n");
  PlayAt(0, "tune");
  Press("Ctrl+L");
  EXPECT_TRUE(hands::until([this] { return Title() == "tune.lrc - Vesmo Editor"; }));
  PlayAt(0, "unknown");
  hands::press(*fWindow, "Ctrl+L");
  EXPECT_EQ(hands::wait_for_question().text, "There is no song in the player whose lyrics could be opened.");
  hands::answer_with_key("Return");
}

TEST_F(EditorWindow, ClosingAsksAndThenTellsTheManager) {
  Open(fFolder.Write("a.lrc", "one\n"));
  Press("Ctrl+D");
  Press("Delete");
  hands::press_close_button(*fWindow);
  hands::wait_for_question();
  hands::answer_with_key("Escape");
  Rest();
  EXPECT_TRUE(fAddress.IsValid());
  hands::press(*fWindow, "Ctrl+W");
  hands::wait_for_question();
  hands::answer_with_button("Yes");
  EXPECT_TRUE(IsClosed());
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("one\n\0", 5));
  fManager->DeliverAll();
  EXPECT_THAT(fManager->Codes(), testing::Contains(uint32{'mwcl'}));
  EXPECT_EQ(gExitState->fMode, 1);
}
