#include "platform/interface/file_panel.h"
#include "platform/interface/window.h"
#include "tests/support/hands.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"

struct FilePanel : testing::Test {
  /** The next message from the panel. */
  BMessage Next() {
    const bool hasCome = hands::until([this] { return fAnswers->DeliverNext(); });
    return hasCome ? fAnswers->Taken().front() : BMessage();
  }

  ScratchFolder fScratch;
  const std::string fFolder = fScratch.Path();
  OwnLooper<Keeping<BLooper>> fAnswers{new Keeping<BLooper>};
  BMessenger fTarget{fAnswers.get()};
};

TEST_F(FilePanel, SavePanelSendsFolderAndNameInAFreshCopyOfItsMessage) {
  const BMessage message = message_of(B_SAVE_REQUESTED, "Encoding", 2);
  BFilePanel panel(B_SAVE_PANEL, &fTarget, nullptr, false, &message);
  panel.SetPanelDirectory(fFolder.c_str());
  panel.SetSaveText("new.lrc");
  panel.Show();
  hands::wait_for_display();
  EXPECT_EQ(hands::file_name_selected(*panel.Window()), "new.lrc");
  for (const char* name : {"first.lrc", "second.lrc"}) {
    panel.Show();
    hands::type_file_name(*panel.Window(), name);
    const BMessage answer = Next();
    EXPECT_EQ(answer.what, uint32{B_SAVE_REQUESTED});
    EXPECT_EQ(field<entry_ref>(answer, "directory"), ref_of(fFolder));
    EXPECT_EQ(field<std::string>(answer, "name"), name);
    EXPECT_EQ(field<int32>(answer, "Encoding"), 2);
    const BMessage closed = Next();
    EXPECT_EQ(closed.what, uint32{B_CANCEL});
    EXPECT_EQ(field<void*>(closed, "source"), &panel);
  }
}

TEST_F(FilePanel, ReplacingAFileAsksFirstEachTime) {
  fScratch.Write("there.lrc", "text");
  BFilePanel panel(B_SAVE_PANEL, &fTarget);
  panel.SetPanelDirectory(fFolder.c_str());
  for (const char* answer : {"Escape", "Alt+Y", "Escape"}) {
    panel.Show();
    hands::type_file_name(*panel.Window(), "there.lrc");
    EXPECT_NE(hands::wait_for_question().text.find("there.lrc"), std::string::npos);
    hands::answer_with_key(answer);
    if (std::string(answer) == "Alt+Y") {
      for (const uint32 code : {uint32{B_SAVE_REQUESTED}, uint32{B_CANCEL}}) EXPECT_EQ(Next().what, code);
      continue;
    }
    hands::wait_for_display();
    EXPECT_TRUE(hands::is_shown(*panel.Window()));
  }
}

TEST_F(FilePanel, DerivedPanelDestroyedDuringItsHookIsStillComplete) {
  struct Derived : BFilePanel {
    explicit Derived(const BMessenger* target) : BFilePanel(B_SAVE_PANEL, target) {}
    ~Derived() override {
      fGoes = true;
      End();
      fIsWhole = false;
    }
    void SendMessage(const BMessenger* target, BMessage* message) override {
      fAnswering.set_value();
      while (!fGoes) std::this_thread::yield();
      BFilePanel::SendMessage(target, message);
      EXPECT_TRUE(fIsWhole);
    }
    std::promise<void> fAnswering;
    std::atomic<bool> fGoes{false};
    std::atomic<bool> fIsWhole{true};
  };
  auto panel = std::make_unique<Derived>(&fTarget);
  panel->SetPanelDirectory(fFolder.c_str());
  panel->Show();
  hands::wait_for_display();
  hands::type_file_name(*panel->Window(), "new.lrc");
  panel->fAnswering.get_future().wait();
  panel.reset();
  EXPECT_EQ(Next().what, uint32{B_SAVE_REQUESTED});
}

/** An open panel that shows a folder with a file. */
struct OpenPanel : FilePanel {
  OpenPanel() {
    fScratch.Write("song.lrc", "text");
    fPanel.SetPanelDirectory(fFolder.c_str());
    fPanel.Show();
    hands::wait_for_display();
  }
  BFilePanel fPanel{B_OPEN_PANEL, &fTarget};
};

TEST_F(OpenPanel, SendsTheFileAndRejectsAMissingOne) {
  hands::type_file_name(*fPanel.Window(), "missing.lrc");
  hands::wait_for_question();
  hands::answer_with_key("Return");
  hands::type_file_name(*fPanel.Window(), "song.lrc");
  const BMessage answer = Next();
  EXPECT_EQ(answer.what, uint32{B_REFS_RECEIVED});
  EXPECT_EQ(field<entry_ref>(answer, "refs"), ref_of(fFolder + "/song.lrc"));
}

TEST_F(OpenPanel, CompletionPopupClosesWithThePanelAndTakesNoMoreKeys) {
  for (const char* letter : {"s", "o", "n", "g", ".", "l", "r", "c"}) hands::press(*fPanel.Window(), letter);
  // Typed before the panel has read its folder, a name is completed only with the next key.
  const auto suggests = [this] {
    if (hands::popup_is_open()) return true;
    for (const char* key : {"Backspace", "c"}) hands::press(*fPanel.Window(), key);
    return hands::popup_is_open();
  };
  ASSERT_TRUE(hands::until(suggests));
  hands::press(*fPanel.Window(), "Return");
  EXPECT_EQ(Next().what, uint32{B_REFS_RECEIVED});
  EXPECT_FALSE(hands::popup_is_open());
}

TEST_F(OpenPanel, EveryWayToCloseItIsReportedOnceAndItCanBeShownAgain) {
  const auto agreesToQuit = [this] {
    EXPECT_EQ(field<bool>(ask(BMessenger(fPanel.Window()), BMessage(B_QUIT_REQUESTED)), "result"), true);
  };
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"key", [this] { hands::press(*fPanel.Window(), "Escape"); }},
      {"close button", [this] { hands::press_close_button(*fPanel.Window()); }},
      {"program that ends", agreesToQuit},
  };
  for (const auto& [way, close] : ways) {
    fPanel.Show();
    EXPECT_TRUE(fPanel.IsShowing()) << way;
    hands::wait_for_display();
    close();
    EXPECT_EQ(Next().what, uint32{B_CANCEL}) << way;
    EXPECT_FALSE(fPanel.IsShowing()) << way;
  }
  agreesToQuit(); // also while closed
  fPanel.Show();
  hands::wait_for_display();
  EXPECT_TRUE(hands::is_shown(*fPanel.Window()));
}

TEST_F(OpenPanel, MissingFolderFallsBackToHome) {
  entry_ref folder;
  fPanel.GetPanelDirectory(&folder);
  EXPECT_EQ(folder.FullPath(), fFolder);
  fPanel.SetPanelDirectory("/boot/home");
  fPanel.GetPanelDirectory(&folder);
  EXPECT_EQ(folder.FullPath(), std::getenv("HOME"));
}
