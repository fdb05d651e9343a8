#include "window/editor_window.h"

#include "lyrics/editor_view.h"
#include "lyrics/lyrics_file.h"
#include "platform/kernel/threads.h"
#include "tests/display/hands.h"
#include "tests/editor/editor_world.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Manager : BLooper {
  void MessageReceived(BMessage* message) override { fReceived.push_back(message->what); }
  std::vector<uint32> fReceived;
};

/** The editor's window, running as it does in the program. */
class EditorWindow : public EditorWorld {
protected:
  EditorWindow() {
    // The polling would never let the window come to rest.
    SetPref([](TPrefValues* values) { values->pollIntervalUs = 100000000; });
    fManager = new Manager;
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
  void Send(const std::string& path) const {
    entry_ref ref;
    get_ref_for_path(path.c_str(), &ref);
    BMessage open(B_REFS_RECEIVED);
    open.AddRef("refs", &ref);
    fAddress.SendMessage(&open);
  }
  void Open(const std::string& path) const {
    Send(path);
    Rest();
  }
  std::string Title() const {
    fAddress.LockTarget();
    const std::string title = fWindow->Title();
    fWindow->Unlock();
    return title;
  }
  std::string Status() const { return hands::label_text(*fWindow, "StatusBar"); }
  std::string Row(int row) const { return hands::row_text(*fWindow, "TagInputView", row); }
  bool IsClosed() const {
    for (int i = 0; i < 3000 && fAddress.IsValid(); ++i) snooze(1000);
    return !fAddress.IsValid();
  }
  Manager* fManager;
  TVesmoEWin* fWindow;
  BMessenger fAddress;
};

} // namespace

TEST_F(EditorWindow, BeginsWithNewLyrics) {
  EXPECT_EQ(Title(), "New lyrics - Vesmo Editor");
  EXPECT_THAT(Status(), StartsWith(" [Tag, extended] UTF-8 <LF>   Space: stamp"));
}

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

TEST_F(EditorWindow, KeepsEncodingAndTakesOffTheByteOrderMark) {
  const std::string sjis = "\x93\xfa\x96\x7b\n";
  Open(fFolder.Write("s.lrc", sjis));
  EXPECT_EQ(Row(0), "日本");
  EXPECT_THAT(Status(), HasSubstr("Shift-JIS <LF>"));
  Press("Ctrl+S");
  EXPECT_EQ(fFolder.Read("s.lrc"), sjis);
  Open(fFolder.Write("b.lrc", "\xef\xbb\xbf[00:01]x\n"));
  EXPECT_EQ(Row(0), "[00:01]x");
}

TEST_F(EditorWindow, WhatCannotBeOpenedIsToldAndNothingIsLost) {
  Open(fFolder.Write("a.lrc", "kept\n"));
  const std::string fifo = fFolder.File("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  for (const std::string& path : {fFolder.Path(), fifo, std::string("/dev/zero")}) {
    Send(path);
    const hands::Question question = hands::wait_for_question();
    EXPECT_EQ(question.text, "These lyrics cannot be opened:\n" + path);
    hands::answer_with_key("Return");
    Rest();
    EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
    EXPECT_EQ(Row(0), "kept");
  }
}

TEST_F(EditorWindow, AMissingFileIsMadeOnlyWhenTheUserSaysSo) {
  const std::string path = fFolder.File("new.lrc");
  Send(path);
  EXPECT_THAT(hands::wait_for_question().text, HasSubstr(path));
  hands::answer_with_key("Escape");
  Rest();
  EXPECT_FALSE(std::filesystem::exists(path));
  Send(path);
  hands::wait_for_question();
  hands::answer_with_button("Yes");
  Rest();
  EXPECT_TRUE(std::filesystem::exists(path));
  EXPECT_EQ(Title(), "new.lrc - Vesmo Editor") << "an empty file is a new document that has its file";
}

TEST_F(EditorWindow, AsksBeforeChangesAreLost) {
  const std::string a = fFolder.Write("a.lrc", "one\n");
  const std::string b = fFolder.Write("b.lrc", "two\n");
  Open(a);
  Press("Delete"); // marks the lyrics
  Send(b);
  const hands::Question question = hands::wait_for_question();
  EXPECT_THAT(question.text, StartsWith("\"a.lrc\" has been changed."));
  EXPECT_EQ(question.buttons, (std::vector<std::string>{"Cancel", "No", "Yes"}));
  hands::answer_with_key("Escape");
  Rest();
  EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
  Send(b);
  hands::wait_for_question();
  hands::answer_with_button("Yes");
  Rest();
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("one\n\0", 5)) << "saved";
  EXPECT_EQ(Title(), "b.lrc - Vesmo Editor") << "and then the other was opened";
  Press("Delete");
  hands::press(*fWindow, "Ctrl+N");
  hands::wait_for_question();
  hands::answer_with_button("No");
  Rest();
  EXPECT_EQ(Title(), "New lyrics - Vesmo Editor");
  EXPECT_EQ(fFolder.Read("b.lrc"), "two\n");
}

TEST_F(EditorWindow, AFailedSaveKeepsTheLyricsAndSaysWhere) {
  Open(fFolder.Write("a.lrc", "precious\n"));
  Press("Delete");
  // A folder where the file was: nothing can take its place, whoever runs this.
  std::filesystem::remove(fFolder.File("a.lrc"));
  std::filesystem::create_directory(fFolder.File("a.lrc"));
  hands::press(*fWindow, "Ctrl+S");
  const std::string text = hands::wait_for_question().text;
  EXPECT_THAT(text, StartsWith("The lyrics could not be saved as:\n" + fFolder.File("a.lrc")));
  hands::answer_with_key("Return");
  Rest();
  const std::string kept = text.substr(text.find("here:\n") + 6);
  std::ifstream file(kept);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), std::string("precious\n\0", 10));
  hands::press(*fWindow, "Ctrl+N");
  EXPECT_THAT(hands::wait_for_question().text, HasSubstr("has been changed")) << "they still count as unsaved";
  hands::answer_with_key("Escape");
}

TEST_F(EditorWindow, NewLyricsAreSavedThroughThePanel) {
  gExitState->fPanelFolder = fFolder.Path();
  PlayAt(5000);
  Press("Space");
  hands::press(*fWindow, "Ctrl+S");
  Rest();
  BMessage save(B_SAVE_REQUESTED); // what the panel answers
  entry_ref folder;
  get_ref_for_path(fFolder.Path().c_str(), &folder);
  save.AddRef("directory", &folder);
  save.AddString("name", "made.lrc");
  save.AddInt32("CRType", 1);
  save.AddInt32("Encoding", 2);
  fAddress.SendMessage(&save);
  Rest();
  EXPECT_EQ(fFolder.Read("made.lrc"), "[00:05:00]\r\n");
  EXPECT_EQ(Title(), "made.lrc - Vesmo Editor");
  EXPECT_THAT(Status(), HasSubstr("JIS <CR LF>"));
}

TEST_F(EditorWindow, OpensTheLyricsOfThePlayingSong) {
  fHost->fEntries = {{fFolder.File("tune.mp3"), "tune"}};
  fFolder.Write("tune.lrc", "la la\n");
  PlayAt(0, "tune");
  Press("Ctrl+L");
  for (int i = 0; i < 1000 && Title() != "tune.lrc - Vesmo Editor"; ++i) snooze(2000);
  EXPECT_EQ(Title(), "tune.lrc - Vesmo Editor");
  PlayAt(0, "unknown");
  hands::press(*fWindow, "Ctrl+L");
  EXPECT_EQ(hands::wait_for_question().text, "There is no song in the player whose lyrics could be opened.");
  hands::answer_with_key("Return");
}

TEST_F(EditorWindow, SwitchesBetweenTheFormsOfTags) {
  PlayAt(61999);
  Open(fFolder.Write("a.lrc", "one\ntwo\n"));
  Press("Down");
  Press("Ctrl+D");
  EXPECT_THAT(Status(), StartsWith(" [Tag, standard]"));
  Press("Space");
  EXPECT_EQ(Row(1), "[01:01]two") << "the line stayed selected";
  const auto lines = hands::menu_lines(*fWindow, {"Mode", "Tag input"});
  EXPECT_FALSE(lines.at(0).isMarked);
  EXPECT_TRUE(lines.at(1).isMarked);
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
  EXPECT_THAT(fManager->fReceived, testing::Contains(uint32{'mwcl'}));
  EXPECT_EQ(gExitState->fMode, 1);
}

TEST_F(EditorWindow, EveryFileCommandHasItsKey) {
  std::vector<std::string> shown;
  for (const hands::MenuLine& line : hands::menu_lines(*fWindow, {"File"})) {
    if (!line.label.empty()) shown.push_back(line.label + " " + line.shortcut);
  }
  EXPECT_THAT(shown, testing::ElementsAre("New Ctrl+N", "Open lyrics of current song Ctrl+L", "Open... Ctrl+O",
                                          "Save Ctrl+S", "Save as... Ctrl+2", "Export... ", "Close Ctrl+W"));
  gIAP->SetString("AccKeyFormat", "a) ");
  BMessage notice('_ipc');
  notice.AddString("IAP:SrcIAPItem", "AccKeyFormat");
  fAddress.SendMessage(&notice);
  Rest();
  EXPECT_EQ(hands::menu_lines(*fWindow, {"F) File"}).at(0).label, "N) New");
}
