#include "platform/interface/menu_bar.h"
#include "platform/kernel/modifiers.h"
#include "tests/support/keeping.h"
#include "tests/support/with_window.h"

using testing::ElementsAre;

namespace {

struct MenuWindow : Keeping<BWindow> {
  MenuWindow() : Keeping({100, 100, 399, 299}, "menus") {
    auto* bar = new BMenuBar({0, 0, 299, 20}, "MenuBar");
    fFile = new BMenu("File & more");
    fFile->AddItem(new BMenuItem("New", new BMessage('_new'), 'N'));
    fOpen = new BMenu("Open");
    fOpen->AddItem(new BMenuItem("newest", new BMessage('frst'), '0', B_SHIFT_KEY));
    fOpen->AddSeparatorItem();
    fOpen->AddItem(new BMenuItem("Forget all", new BMessage('_dam')));
    fFile->AddItem(new BMenuItem(fOpen, new BMessage('_opn'), 'O'));
    fFile->AddItem(new BMenuItem("Save as", new BMessage('_sva'), '2'));
    bar->AddItem(fFile);
    AddChild(bar);
  }
  BMenu* fFile;
  BMenu* fOpen;
};

} // namespace

struct Menus : WithWindow<MenuWindow> {
  std::vector<uint32> AfterKey(const char* key) {
    return After([&] { hands::press(*fWindow, key); });
  }
  std::vector<uint32> AfterClick(const std::vector<std::string>& labels) {
    return After([&] { hands::choose(*fWindow, labels); });
  }
};

TEST_F(Menus, ShortcutsReachTheWindowAndChangeNoMarks) {
  fWindow->fFile->ItemAt(0)->SetMarked(true);
  for (const auto& [key, code] :
       {std::pair{"Ctrl+N", '_new'}, {"Ctrl+2", '_sva'}, {"Ctrl+Shift+0", 'frst'}, {"Ctrl+O", '_opn'}})
    EXPECT_THAT(AfterKey(key), ElementsAre(code)) << key;
  EXPECT_THAT(AfterKey("Ctrl+Q"), ElementsAre());
  EXPECT_TRUE(hands::menu_lines(*fWindow, {"File & more"})[0].isMarked);
}

TEST_F(Menus, DisabledItemCannotBeChosenAlsoIfItIsDisabledWhileItsChoiceIsQueued) {
  const auto disable = [this](bool isDisabled) { fWindow->fFile->FindItem('_sva')->SetEnabled(!isDisabled); };
  EXPECT_THAT(After([&] {
                hands::press(*fWindow, "Ctrl+2");
                disable(true);
              }),
              ElementsAre());
  EXPECT_THAT(AfterClick({"File & more", "Save as"}), ElementsAre());
  EXPECT_THAT(AfterKey("Ctrl+2"), ElementsAre());
  disable(false);
  hands::settle(*fWindow);
  EXPECT_THAT(AfterKey("Ctrl+2"), ElementsAre('_sva'));
}

TEST_F(Menus, RebuiltMenuIsShownAndWorks) {
  delete fWindow->fFile->RemoveItem(int32{0});
  fWindow->fFile->AddItem(new BMenuItem("新規", new BMessage('neu_'), 'K'), 0);
  hands::settle(*fWindow);
  const auto lines = hands::menu_lines(*fWindow, {"File & more"});
  EXPECT_EQ(lines[0].label, "新規");
  EXPECT_EQ(lines[0].shortcut, "Ctrl+K");
  EXPECT_THAT(AfterKey("Ctrl+N"), ElementsAre());
  EXPECT_THAT(AfterKey("Ctrl+K"), ElementsAre('neu_'));
}

TEST_F(Menus, EveryItemIsReachableByKeyboardAlsoIfItChangesWhileItsMenuIsOpen) {
  EXPECT_THAT(After([&] {
                hands::press(*fWindow, "F10");
                hands::press_in_menu("Down");
                for (const bool isMarked : {true, false}) {
                  fWindow->fFile->ItemAt(0)->SetMarked(isMarked);
                  hands::settle(*fWindow);
                }
                hands::press_in_menu("Return");
              }),
              ElementsAre('_new'));

  fWindow->fFile->SetTitle("F) File");
  EXPECT_STREQ(fWindow->fFile->Title(), "F) File");
  fWindow->fFile->AddItem(new BMenuItem("A) Save all", new BMessage('sall')));
  hands::settle(*fWindow);
  EXPECT_THAT(After([&] {
                hands::press(*fWindow, "Alt+F");
                hands::press_in_menu("A");
              }),
              ElementsAre('sall'));
}
