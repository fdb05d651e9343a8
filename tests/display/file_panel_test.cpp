#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "platform/interface/file_panel.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/window.h"
#include "tests/display/hands.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <vector>

namespace {

/** Hands over what it receives, one message after the other. */
class Answers : public BLooper {
public:
  Answers() : BLooper("answers") {}
  void MessageReceived(BMessage* message) override {
    const std::scoped_lock hold(fLock);
    fMessages.push_back(*message);
    fArrived.notify_all();
  }
  BMessage Next() {
    std::unique_lock hold(fLock);
    if (!fArrived.wait_for(hold, std::chrono::seconds(20), [this] { return !fMessages.empty(); })) return BMessage();
    BMessage first = fMessages.front();
    fMessages.erase(fMessages.begin());
    return first;
  }

private:
  std::mutex fLock;
  std::condition_variable fArrived;
  std::vector<BMessage> fMessages;
};

} // namespace

class FilePanel : public testing::Test {
protected:
  FilePanel() : fAnswers(new Answers), fTarget(fAnswers) {
    std::string folder = testing::TempDir() + "panelXXXXXX";
    fFolder = mkdtemp(folder.data());
    fAnswers->Run();
  }
  ~FilePanel() override {
    if (fAnswers->Lock()) fAnswers->Quit();
    std::filesystem::remove_all(fFolder);
  }
  void Write(const std::string& name) { std::ofstream(fFolder + "/" + name) << "text"; }

  std::string fFolder;
  Answers* fAnswers;
  BMessenger fTarget;
};

TEST_F(FilePanel, SaveAnswersWithFolderAndNameOnAFreshCopyOfItsMessage) {
  BMessage message(B_SAVE_REQUESTED);
  message.AddInt32("Encoding", 2);
  BFilePanel panel(B_SAVE_PANEL, &fTarget, nullptr, false, &message);
  panel.SetPanelDirectory(fFolder.c_str());
  panel.SetSaveText("new.lrc");
  panel.Show();
  hands::wait_for_display();
  EXPECT_EQ(hands::file_name_selected(*panel.Window()), "new.lrc");
  for (const char* name : {"first.lrc", "second.lrc"}) {
    panel.Show();
    hands::type_file_name(*panel.Window(), name);
    const BMessage answer = fAnswers->Next();
    ASSERT_EQ(answer.what, uint32{B_SAVE_REQUESTED});
    entry_ref directory;
    std::string chosen;
    int32 encoding = 0;
    EXPECT_EQ(answer.FindRef("directory", &directory), B_OK);
    EXPECT_EQ(directory.FullPath(), fFolder);
    EXPECT_EQ(answer.FindString("name", 0, &chosen), B_OK);
    EXPECT_EQ(chosen, name);
    EXPECT_EQ(answer.FindInt32("Encoding", &encoding), B_OK);
    EXPECT_EQ(encoding, 2);
    const BMessage closed = fAnswers->Next();
    void* source = nullptr;
    EXPECT_EQ(closed.what, uint32{B_CANCEL});
    EXPECT_EQ(closed.FindPointer("source", &source), B_OK);
    EXPECT_EQ(source, &panel);
  }
}

TEST_F(FilePanel, SavingOverAFileAsksFirst) {
  Write("there.lrc");
  BFilePanel panel(B_SAVE_PANEL, &fTarget);
  panel.SetPanelDirectory(fFolder.c_str());
  panel.Show();
  hands::type_file_name(*panel.Window(), "there.lrc");
  EXPECT_NE(hands::wait_for_question().text.find("there.lrc"), std::string::npos);
  hands::answer_with_key("Escape");
  hands::wait_for_display();
  EXPECT_TRUE(hands::is_shown(*panel.Window()));

  hands::type_file_name(*panel.Window(), "there.lrc");
  hands::wait_for_question();
  hands::answer_with_key("Alt+Y");
  EXPECT_EQ(fAnswers->Next().what, uint32{B_SAVE_REQUESTED});
}

TEST_F(FilePanel, OpenAnswersWithTheFileAndRefusesOneThatIsNotThere) {
  Write("song.lrc");
  BFilePanel panel(B_OPEN_PANEL, &fTarget);
  panel.SetPanelDirectory(fFolder.c_str());
  panel.Show();
  hands::type_file_name(*panel.Window(), "missing.lrc");
  hands::wait_for_question();
  hands::answer_with_key("Return");
  hands::type_file_name(*panel.Window(), "song.lrc");
  const BMessage answer = fAnswers->Next();
  entry_ref file;
  EXPECT_EQ(answer.what, uint32{B_REFS_RECEIVED});
  ASSERT_EQ(answer.FindRef("refs", &file), B_OK);
  EXPECT_EQ(file.FullPath(), fFolder + "/song.lrc");
}

TEST_F(FilePanel, SuggestionsGoWithThePanelAndTakeNoMoreKeys) {
  Write("song.lrc");
  BFilePanel panel(B_OPEN_PANEL, &fTarget);
  panel.SetPanelDirectory(fFolder.c_str());
  panel.Show();
  hands::wait_for_display();
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  for (const char* letter : {"s", "o", "n", "g", ".", "l", "r", "c"}) hands::press(*panel.Window(), letter);
  while (!hands::popup_is_open() && std::chrono::steady_clock::now() < end) hands::wait_for_display();
  ASSERT_TRUE(hands::popup_is_open());
  hands::press(*panel.Window(), "Return");
  EXPECT_EQ(fAnswers->Next().what, uint32{B_REFS_RECEIVED});
  EXPECT_FALSE(hands::popup_is_open());
}

TEST_F(FilePanel, EveryWayToCloseItSaysSoOnce) {
  BFilePanel panel(B_OPEN_PANEL, &fTarget);
  panel.Show();
  EXPECT_TRUE(panel.IsShowing());
  hands::wait_for_display();
  hands::press(*panel.Window(), "Escape");
  EXPECT_EQ(fAnswers->Next().what, uint32{B_CANCEL});
  EXPECT_FALSE(panel.IsShowing());
  panel.Show();
  hands::press_close_button(*panel.Window());
  EXPECT_EQ(fAnswers->Next().what, uint32{B_CANCEL});
  panel.Show();
  panel.Hide();
  EXPECT_EQ(fAnswers->Next().what, uint32{B_CANCEL});
}

TEST_F(FilePanel, AgreesWhenTheProgramAsksWhetherItMayClose) {
  BFilePanel panel(B_OPEN_PANEL, &fTarget);
  panel.Show();
  for (int time = 0; time < 2; ++time) { // open, then closed
    const BMessage question(B_QUIT_REQUESTED);
    BMessage answer;
    bool agreed = false;
    BMessenger(panel.Window()).SendMessage(&question, &answer);
    EXPECT_EQ(answer.FindBool("result", &agreed), B_OK);
    EXPECT_TRUE(agreed);
    if (time == 0) {
      EXPECT_EQ(fAnswers->Next().what, uint32{B_CANCEL});
    }
    EXPECT_FALSE(panel.IsShowing());
  }
  panel.Show();
  hands::wait_for_display();
  EXPECT_TRUE(hands::is_shown(*panel.Window())) << "it lives on";
}

TEST_F(FilePanel, FolderThatIsGoneMeansHome) {
  BFilePanel panel(B_OPEN_PANEL, &fTarget);
  entry_ref folder;
  panel.SetPanelDirectory(fFolder.c_str());
  panel.GetPanelDirectory(&folder);
  EXPECT_EQ(folder.FullPath(), fFolder);
  panel.SetPanelDirectory("/boot/home");
  panel.GetPanelDirectory(&folder);
  EXPECT_EQ(folder.FullPath(), std::getenv("HOME"));
}

TEST_F(FilePanel, SubclassAddsToTheAnswerFromMenusOfItsOwn) {
  struct EncodingPanel : BFilePanel {
    explicit EncodingPanel(const BMessenger& target) : BFilePanel(B_SAVE_PANEL, &target) {
      Window()->Lock();
      auto* bar = dynamic_cast<BMenuBar*>(Window()->FindView("MenuBar"));
      fMenu = new BMenu("Encoding");
      fMenu->SetRadioMode(true);
      for (const char* label : {"UTF-8", "Shift-JIS", "JIS"}) fMenu->AddItem(new BMenuItem(label, nullptr));
      fMenu->ItemAt(0)->SetMarked(true);
      bar->AddItem(fMenu);
      Window()->Unlock();
    }
    void SendMessage(const BMessenger* target, BMessage* message) override {
      message->AddInt32("Encoding", fMenu->IndexOf(fMenu->FindMarked()));
      BFilePanel::SendMessage(target, message);
    }
    BMenu* fMenu;
  };
  EncodingPanel panel(fTarget);
  panel.SetPanelDirectory(fFolder.c_str());
  panel.Show();
  BMessage ping('ping'), pong;
  BMessenger(panel.Window()).SendMessage(&ping, &pong); // the menus are handed over before this is looked at
  EXPECT_TRUE(hands::choose(*panel.Window(), {"Encoding", "JIS"}));
  hands::type_file_name(*panel.Window(), "a.lrc");
  int32 encoding = -1;
  EXPECT_EQ(fAnswers->Next().FindInt32("Encoding", &encoding), B_OK);
  EXPECT_EQ(encoding, 2);
}
