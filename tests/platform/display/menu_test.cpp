#include "platform/interface/menu_bar.h"
#include "platform/kernel/modifiers.h"
#include "tests/support/keeping.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

class MenuWindow : public Keeping<BWindow> {
public:
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
    fMode = new BMenu("Mode");
    fMode->SetRadioMode(true);
    for (const char* label : {"Ext", "Std"}) fMode->AddItem(new BMenuItem(label, new BMessage('mode')));
    fMode->ItemAt(0)->SetMarked(true);
    bar->AddItem(fMode);
    AddChild(bar);
  }
  BMenu* fFile;
  BMenu* fOpen;
  BMenu* fMode;
};

} // namespace

using Menus = WithWindow<MenuWindow>;

TEST_F(Menus, ShortcutsReachTheWindow) {
  EXPECT_THAT(After([&] { hands::press(*fWindow, "Ctrl+N"); }), ElementsAre('_new'));
  EXPECT_THAT(After([&] { hands::press(*fWindow, "Ctrl+2"); }), ElementsAre('_sva'));
  EXPECT_THAT(After([&] { hands::press(*fWindow, "Ctrl+Shift+0"); }), ElementsAre('frst'));
  EXPECT_THAT(After([&] { hands::press(*fWindow, "Ctrl+O"); }), ElementsAre('_opn'));
  EXPECT_THAT(After([&] { hands::press(*fWindow, "Ctrl+Q"); }), ElementsAre());
}

TEST_F(Menus, ClickAlsoChoosesAnItemWithASubmenu) {
  EXPECT_THAT(After([&] { EXPECT_TRUE(hands::choose(*fWindow, {"File & more", "New"})); }), ElementsAre('_new'));
  EXPECT_THAT(After([&] { EXPECT_TRUE(hands::choose(*fWindow, {"File & more", "Open"})); }), ElementsAre('_opn'));
  EXPECT_THAT(After([&] {
                EXPECT_TRUE(hands::choose(*fWindow, {"File & more", "Open", "newest"}));
              }),
              ElementsAre('frst'));
}

TEST_F(Menus, DisabledItemCannotBeChosen) {
  fWindow->fFile->FindItem('_sva')->SetEnabled(false);
  hands::settle(*fWindow);
  EXPECT_FALSE(hands::choose(*fWindow, {"File & more", "Save as"}));
  EXPECT_THAT(After([&] { hands::press(*fWindow, "Ctrl+2"); }), ElementsAre());
}

TEST_F(Menus, ItemDisabledWhileItsChoiceIsQueuedDoesNothing) {
  EXPECT_THAT(After([&] {
                hands::press(*fWindow, "Ctrl+2");
                fWindow->fFile->FindItem('_sva')->SetEnabled(false);
              }),
              ElementsAre());
}

TEST_F(Menus, RadioMenuMarksTheChosenItem) {
  hands::choose(*fWindow, {"Mode", "Std"});
  hands::settle(*fWindow);
  EXPECT_EQ(fWindow->fMode->FindMarked(), fWindow->fMode->ItemAt(1));
  const auto lines = hands::menu_lines(*fWindow, {"Mode"});
  EXPECT_FALSE(lines[0].isMarked);
  EXPECT_TRUE(lines[1].isMarked);
}

TEST_F(Menus, OnlyTheProgramChangesMarksOutsideRadioMenus) {
  BMenuItem* const item = fWindow->fFile->ItemAt(0);
  item->SetMarked(true);
  hands::settle(*fWindow);
  hands::press(*fWindow, "Ctrl+N");
  hands::settle(*fWindow);
  EXPECT_TRUE(item->IsMarked());
  EXPECT_TRUE(hands::menu_lines(*fWindow, {"File & more"})[0].isMarked);
}

TEST_F(Menus, RebuiltMenuIsShownAndWorks) {
  BMenuItem* const old = fWindow->fFile->RemoveItem(0);
  delete old;
  fWindow->fFile->AddItem(new BMenuItem("新規", new BMessage('neu_'), 'K'), 0);
  hands::settle(*fWindow);
  const auto lines = hands::menu_lines(*fWindow, {"File & more"});
  EXPECT_EQ(lines[0].label, "新規");
  EXPECT_EQ(lines[0].shortcut, "Ctrl+K");
  EXPECT_THAT(After([&] { hands::press(*fWindow, "Ctrl+N"); }), ElementsAre());
  EXPECT_THAT(After([&] { hands::press(*fWindow, "Ctrl+K"); }), ElementsAre('neu_'));
}

TEST_F(Menus, ItemsCanBeInsertedAndRemoved) {
  fWindow->fOpen->AddItem(new BMenuItem("older", new BMessage('scnd')), 1);
  hands::settle(*fWindow);
  EXPECT_EQ(hands::menu_lines(*fWindow, {"File & more", "Open"}).size(), 4u);
  delete fWindow->fOpen->RemoveItem(int32{0});
  hands::settle(*fWindow);
  EXPECT_EQ(hands::menu_lines(*fWindow, {"File & more", "Open"})[0].label, "older");
}

TEST_F(Menus, EveryItemIsReachableByKeyboard) {
  EXPECT_THAT(After([&] {
                hands::press(*fWindow, "F10");
                for (const char* key : {"Down", "Return"}) hands::press_in_menu(key);
              }),
              ElementsAre('_new'));

  fWindow->fFile->SetTitle("F) File");
  fWindow->fFile->AddItem(new BMenuItem("A) Save all", new BMessage('sall')));
  hands::settle(*fWindow);
  EXPECT_THAT(After([&] {
                hands::press(*fWindow, "Alt+F");
                hands::press_in_menu("A");
              }),
              ElementsAre('sall'));
}
