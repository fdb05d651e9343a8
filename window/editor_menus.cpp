/** The editor window's menus. Every label is a language text with its accelerator letter. */

#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "lyrics/editor_view.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/menu_item.h"
#include "plugin/message_filters.h"
#include "window/editor_window.h"
#include "window/save_panel.h"

namespace {

std::string label_of(const char* key, const char* letter) {
  return accelerator_label(letter, gLLT->Text(key));
}

} // namespace

BMenuItem* TVesmoEWin::MakeItem(const char* key, const char* letter, uint32 code, char shortcut, BHandler* target) {
  auto* const item = new BMenuItem(label_of(key, letter).c_str(), new BMessage(code), shortcut);
  item->SetTarget(BMessenger(target));
  return item;
}

BMenu* TVesmoEWin::MakeFileMenu() {
  auto* const menu = new BMenu(label_of("Menu_File", "F").c_str());
  menu->AddItem(MakeItem("MItem_New", "N", kMsgNew, 'N', fEditorView));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_Open_Cur", "L", kMsgOpenCurrent, 'L', fEditorView));
  menu->AddItem(MakeItem("Menu_Open", "O", kMsgOpenPanel, 'O', this));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_Save", "S", kMsgSave, 'S', fEditorView));
  menu->AddItem(MakeItem("MItem_Save_As", "A", kMsgSaveAs, '2', this));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_Close", "W", B_QUIT_REQUESTED, 'W', this));
  return menu;
}

BMenuItem* TVesmoEWin::MakeModeItem(const char* key, const char* letter, char shortcut, int32 mode) {
  BMenuItem* const item = MakeItem(key, letter, kMsgMode, shortcut, fEditorView);
  item->Message()->AddInt32("Mode", mode);
  fModeItems[mode] = item;
  return item;
}

BMenu* TVesmoEWin::MakeModeMenu() {
  auto* const menu = new BMenu(label_of("Menu_Mode", "M").c_str());
  menu->AddItem(MakeModeItem("MItem_Tag_Input_Ext_Mode", "T", 'T', 0));
  menu->AddItem(MakeModeItem("MItem_Tag_Input_Std_Mode", "D", 'D', 1));
  return menu;
}

BMenu* TVesmoEWin::MakeHelpMenu() {
  auto* const menu = new BMenu(label_of("Menu_Help", "H").c_str());
  menu->AddItem(MakeItem("MItem_Help", "H", '_hlp', 0, fManager));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_About", "A", B_ABOUT_REQUESTED, 0, fManager));
  return menu;
}

void TVesmoEWin::CreateMenu() {
  fMenuBar->AddItem(MakeFileMenu());
  fMenuBar->AddItem(MakeModeMenu());
  fMenuBar->AddItem(MakeHelpMenu());
}

void TVesmoEWin::SetLabels() {
  while (BMenuItem* const item = fMenuBar->RemoveItem(int32{0})) delete item;
  CreateMenu();
  MarkMode(fEditorView->Mode());
  SetOpenPanelLabel();
  SetSavePanelLabel();
}

void TVesmoEWin::UpdateModeComposRqtd(const BMessage& message) {
  int32 mode = 0;
  if (message.FindInt32("Mode", &mode) == B_OK) MarkMode(mode);
}

void TVesmoEWin::MarkMode(int32 mode) {
  for (int32 i = 0; i < 2; ++i) fModeItems[i]->SetMarked(i == mode);
}
