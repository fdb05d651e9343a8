/** The editor window's menus. Every label is a language text with its accelerator letter. */

#include "document/editor_view.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/menu_item.h"
#include "platform/kernel/modifiers.h"
#include "window/editor_window.h"
#include "window/manager_requests.h"
#include "window/save_panel.h"

namespace {

std::string label_of(const char* key, const char* letter) {
  return accelerator_label(letter, gLLT->Text(key));
}

} // namespace

BMenuItem* TVesmoEWin::MakeItem(const char* key, const char* letter, uint32 code, char shortcut, BHandler* target,
                                uint32 modifiers) {
  auto* const item = new BMenuItem(label_of(key, letter).c_str(), new BMessage(code), shortcut, modifiers);
  item->SetTarget(BMessenger(target));
  return item;
}

BMenuItem* TVesmoEWin::MakeOpenSubmenu() {
  fOpenMenu = new BMenu(label_of("Menu_Open", "O").c_str());
  fOpenMenu->AddSeparatorItem();
  fOpenMenu->AddItem(MakeItem("MItem_Del_All_MRUF", "D", kMsgClearHistory, 0, this));
  // Chosen by itself it opens the panel; unfolded it shows the recent files.
  auto* const item = new BMenuItem(fOpenMenu, new BMessage(kMsgOpenPanel), 'O');
  item->SetTarget(BMessenger(this));
  return item;
}

BMenu* TVesmoEWin::MakeFileMenu() {
  auto* const menu = new BMenu(label_of("Menu_File", "F").c_str());
  menu->AddItem(MakeItem("MItem_New", "N", kMsgNew, 'N', fEditorView));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_Open_Cur", "L", kMsgOpenCurrent, 'L', fEditorView));
  menu->AddItem(MakeOpenSubmenu());
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_Save", "S", kMsgSave, 'S', fEditorView));
  menu->AddItem(MakeItem("MItem_Save_As", "A", kMsgSaveAs, '2', this));
  menu->AddItem(MakeItem("MItem_Export", "E", kMsgExport, 0, this));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_Close", "W", B_QUIT_REQUESTED, 'W', this));
  return menu;
}

BMenuItem* TVesmoEWin::MakeConvertItem(const char* key, const char* letter, bool toExtended) {
  BMenuItem* const item = MakeItem(key, letter, kMsgConvertTags, 0, fEditorView);
  item->Message()->AddBool("CvtTagS2E", toExtended);
  return item;
}

BMenu* TVesmoEWin::MakeEditMenu() {
  auto* const menu = new BMenu(label_of("Menu_Edit", "E").c_str());
  fUndoItem = MakeItem("MItem_Undo", "U", kMsgUndo, 'Z', fEditorView);
  fRedoItem = MakeItem("MItem_Redo", "R", kMsgRedo, 'Z', fEditorView, B_SHIFT_KEY);
  menu->AddItem(fUndoItem);
  menu->AddItem(fRedoItem);
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_Fine_Time_Tag", "F", kMsgFineTimeTag, 0, fManager));
  menu->AddItem(MakeItem("MItem_Del_All_Time_Tag", "D", kMsgDeleteTags, 0, fEditorView));
  menu->AddSeparatorItem();
  menu->AddItem(MakeConvertItem("MItem_Cvt_Tag_Std_To_Ext", "E", true));
  menu->AddItem(MakeConvertItem("MItem_Cvt_Tag_Ext_To_Std", "S", false));
  return menu;
}

BMenuItem* TVesmoEWin::MakeModeItem(const char* key, const char* letter, char shortcut, int32 mode) {
  BMenuItem* const item = MakeItem(key, letter, kMsgMode, shortcut, fEditorView);
  item->Message()->AddInt32("Mode", mode);
  fModeItems[mode] = item;
  return item;
}

BMenu* TVesmoEWin::MakeModeMenu() {
  auto* const tagInput = new BMenu(label_of("Menu_Tag_Input_Mode", "T").c_str());
  tagInput->AddItem(MakeModeItem("MItem_Tag_Input_Ext_Mode", "T", 'T', 0));
  tagInput->AddItem(MakeModeItem("MItem_Tag_Input_Std_Mode", "D", 'D', 1));
  auto* const tagInputItem = new BMenuItem(tagInput, new BMessage(*fModeItems[0]->Message()));
  tagInputItem->SetTarget(BMessenger(fEditorView));
  auto* const menu = new BMenu(label_of("Menu_Mode", "M").c_str());
  menu->AddItem(tagInputItem);
  menu->AddItem(MakeModeItem("MItem_Free_Edit_Mode", "E", 'E', 2));
  return menu;
}

BMenu* TVesmoEWin::MakeToolMenu() {
  auto* const menu = new BMenu(label_of("Menu_Tool", "T").c_str());
  menu->AddItem(MakeItem("MItem_Preferences", "P", kMsgPreferences, 'P', fManager));
  menu->AddItem(MakeItem("MItem_KOREVA_Common_Preferences", "S", kMsgCommonPref, 0, fManager));
  return menu;
}

BMenu* TVesmoEWin::MakeHelpMenu() {
  auto* const menu = new BMenu(label_of("Menu_Help", "H").c_str());
  menu->AddItem(MakeItem("MItem_Help", "H", kMsgHelp, 0, fManager));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem("MItem_About", "A", B_ABOUT_REQUESTED, 0, fManager));
  return menu;
}

void TVesmoEWin::CreateMenu() {
  fMenuBar->AddItem(MakeFileMenu());
  fMenuBar->AddItem(MakeEditMenu());
  fMenuBar->AddItem(MakeModeMenu());
  fMenuBar->AddItem(MakeToolMenu());
  fMenuBar->AddItem(MakeHelpMenu());
  EnableHistoryItems();
}

void TVesmoEWin::SetLabels() {
  while (BMenuItem* const item = fMenuBar->RemoveItem(int32{0})) delete item;
  CreateMenu();
  GenerateMenuMRUF();
  MarkMode(static_cast<int32>(fEditorView->Mode()));
  SetOpenPanelLabel();
  SetSavePanelLabel();
}

void TVesmoEWin::UpdateModeComposRqtd(const BMessage& message) {
  int32 mode = 0;
  if (message.FindInt32("Mode", &mode) == B_OK) MarkMode(mode);
}

void TVesmoEWin::MarkMode(int32 mode) {
  for (int32 i = 0; i < kModeCount; ++i) fModeItems[i]->SetMarked(i == mode);
  PressModeButton(mode);
}

void TVesmoEWin::HistoryChanged(const BMessage& message) {
  message.FindBool("CanUndo", &fCanUndo);
  message.FindBool("CanRedo", &fCanRedo);
  EnableHistoryItems();
}

void TVesmoEWin::EnableHistoryItems() {
  fUndoItem->SetEnabled(fCanUndo);
  fRedoItem->SetEnabled(fCanRedo);
}
