#include "window/save_panel.h"

#include "tests/display/keeping.h"
#include "tests/editor/editor_world.h"

namespace {

class SavePanel : public EditorWorld {
protected:
  SavePanel() : fAnswers(new Keeping<BLooper>), fPanel(std::make_unique<TVesmoESavePanel>(BMessenger(fAnswers))) {
    fPanel->SetPanelDirectory(fFolder.Path().c_str());
  }
  ~SavePanel() override {
    fPanel.reset();
    fAnswers->Lock();
    fAnswers->Quit();
  }
  void Show(int32 encoding, int32 crType) {
    fPanel->SetEncoding(encoding);
    fPanel->SetCRType(crType);
    fPanel->Show();
    hands::wait_for_display();
  }
  bool IsMarked(const char* menu, const std::string& label) {
    return hands::until([&] {
      for (const hands::MenuLine& line : hands::menu_lines(*fPanel->Window(), {menu}))
        if (line.isMarked) return line.label == label;
      return false;
    });
  }
  /** Types a name and takes the answer. */
  BMessage Save(const char* name) {
    hands::type_file_name(*fPanel->Window(), name);
    hands::until([this] { return fAnswers->DeliverAll() > 0; });
    for (const BMessage& message : fAnswers->Taken())
      if (message.what == B_SAVE_REQUESTED) return message;
    return BMessage();
  }
  Keeping<BLooper>* fAnswers;
  std::unique_ptr<TVesmoESavePanel> fPanel;
};

void expect_choice(const BMessage& answer, int32 encoding, int32 crType) {
  int32 value = -1;
  EXPECT_EQ(answer.FindInt32("Encoding", &value), B_OK);
  EXPECT_EQ(value, encoding);
  EXPECT_EQ(answer.FindInt32("CRType", &value), B_OK);
  EXPECT_EQ(value, crType);
}

} // namespace

TEST_F(SavePanel, MenusAreReachedByKeyboard) {
  Show(0, 0);
  EXPECT_TRUE(IsMarked("Encoding", "UTF-8"));
  hands::press(*fPanel->Window(), "Alt+E");
  EXPECT_TRUE(hands::until(hands::popup_is_open));
  for (const char* key : {"Down", "Return"}) hands::press_in_menu(key);
  EXPECT_TRUE(IsMarked("Encoding", "Shift-JIS"));
  hands::press(*fPanel->Window(), "Alt+R");
  EXPECT_TRUE(hands::until(hands::popup_is_open));
  for (const char* key : {"Up", "Return"}) hands::press_in_menu(key);
  EXPECT_TRUE(IsMarked("Return Code", "CR"));
  expect_choice(Save("d.lrc"), 1, 2);
}

TEST_F(SavePanel, NumberWithoutAnItemLeavesTheMark) {
  Show(2, 1);
  Show(3, -1);
  expect_choice(Save("e.lrc"), 2, 1);
}
