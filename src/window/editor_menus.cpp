#include "window/editor_menus.h"

#include "document/editor_view.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/menu_item.h"
#include "platform/kernel/modifiers.h"
#include "plugin/message_codes.h"
#include "window/editor_window.h"

namespace {

std::string label_of(const char* key, const char* letter) {
  return accelerator_label(letter, gLLT->Text(key));
}

BMenuItem* make_item(const char* key, const char* letter, uint32 code, char shortcut, BHandler* target,
                     uint32 modifiers = 0) {
  auto* const item = new BMenuItem(label_of(key, letter).c_str(), new BMessage(code), shortcut, modifiers);
  item->SetTarget(BMessenger(target));
  return item;
}

} // namespace

BMenuItem* TEditorMenus::MakeOpenSubmenu() {
  fOpenMenu = new BMenu(label_of("Menu_Open", "O").c_str());
  fOpenMenu->AddSeparatorItem();
  fOpenMenu->AddItem(make_item("MItem_Del_All_MRUF", "D", kMsgClearHistory, 0, fTargets.window));
  // Choosing the item itself opens the panel; the submenu lists the recent files.
  auto* const item = new BMenuItem(fOpenMenu, new BMessage(kMsgOpenPanel), 'O');
  item->SetTarget(BMessenger(fTargets.window));
  return item;
}

BMenu* TEditorMenus::MakeFileMenu() {
  auto* const menu = new BMenu(label_of("Menu_File", "F").c_str());
  menu->AddItem(make_item("MItem_New", "N", kMsgNew, 'N', fTargets.view));
  menu->AddSeparatorItem();
  menu->AddItem(make_item("MItem_Open_Cur", "L", kMsgOpenCurrent, 'L', fTargets.view));
  menu->AddItem(MakeOpenSubmenu());
  menu->AddSeparatorItem();
  menu->AddItem(make_item("MItem_Save", "S", kMsgSave, 'S', fTargets.view));
  menu->AddItem(make_item("MItem_Save_As", "A", kMsgSaveAs, '2', fTargets.window));
  menu->AddItem(make_item("MItem_Export", "E", kMsgExport, 0, fTargets.window));
  menu->AddSeparatorItem();
  menu->AddItem(make_item("MItem_Close", "W", B_QUIT_REQUESTED, 'W', fTargets.window));
  return menu;
}

BMenuItem* TEditorMenus::MakeConvertItem(const char* key, const char* letter, bool toExtended) {
  BMenuItem* const item = make_item(key, letter, kMsgConvertTags, 0, fTargets.view);
  item->Message()->AddBool("CvtTagS2E", toExtended);
  return item;
}

BMenu* TEditorMenus::MakeEditMenu() {
  auto* const menu = new BMenu(label_of("Menu_Edit", "E").c_str());
  fUndoItem = make_item("MItem_Undo", "U", kMsgUndo, 'Z', fTargets.view);
  fRedoItem = make_item("MItem_Redo", "R", kMsgRedo, 'Z', fTargets.view, B_SHIFT_KEY);
  menu->AddItem(fUndoItem);
  menu->AddItem(fRedoItem);
  menu->AddSeparatorItem();
  menu->AddItem(make_item("MItem_Fine_Time_Tag", "F", kMsgFineTimeTag, 0, fTargets.manager));
  menu->AddItem(make_item("MItem_Del_All_Time_Tag", "D", kMsgDeleteTags, 0, fTargets.view));
  menu->AddSeparatorItem();
  menu->AddItem(MakeConvertItem("MItem_Cvt_Tag_Std_To_Ext", "E", true));
  menu->AddItem(MakeConvertItem("MItem_Cvt_Tag_Ext_To_Std", "S", false));
  return menu;
}

BMenuItem* TEditorMenus::MakeModeItem(const char* key, const char* letter, char shortcut, TEditMode mode) {
  BMenuItem* const item = make_item(key, letter, kMsgMode, shortcut, fTargets.view);
  item->Message()->AddInt32("Mode", static_cast<int32>(mode));
  fModeItems[static_cast<int32>(mode)] = item;
  return item;
}

BMenu* TEditorMenus::MakeModeMenu() {
  auto* const tagInput = new BMenu(label_of("Menu_Tag_Input_Mode", "T").c_str());
  tagInput->AddItem(MakeModeItem("MItem_Tag_Input_Ext_Mode", "T", 'T', TEditMode::kTagInputExtended));
  tagInput->AddItem(MakeModeItem("MItem_Tag_Input_Std_Mode", "D", 'D', TEditMode::kTagInputStandard));
  auto* const tagInputItem = new BMenuItem(tagInput, new BMessage(*fModeItems[0]->Message()));
  tagInputItem->SetTarget(BMessenger(fTargets.view));
  auto* const menu = new BMenu(label_of("Menu_Mode", "M").c_str());
  menu->AddItem(tagInputItem);
  menu->AddItem(MakeModeItem("MItem_Free_Edit_Mode", "E", 'E', TEditMode::kFreeEdit));
  return menu;
}

BMenu* TEditorMenus::MakeToolMenu() {
  auto* const menu = new BMenu(label_of("Menu_Tool", "T").c_str());
  menu->AddItem(make_item("MItem_Preferences", "P", kMsgPreferences, 'P', fTargets.manager));
  menu->AddItem(make_item("MItem_KOREVA_Common_Preferences", "S", kMsgCommonPref, 0, fTargets.manager));
  return menu;
}

BMenu* TEditorMenus::MakeHelpMenu() {
  auto* const menu = new BMenu(label_of("Menu_Help", "H").c_str());
  menu->AddItem(make_item("MItem_Help", "H", kMsgHelp, 0, fTargets.manager));
  menu->AddSeparatorItem();
  menu->AddItem(make_item("MItem_About", "A", B_ABOUT_REQUESTED, 0, fTargets.manager));
  return menu;
}

void TEditorMenus::Build() {
  while (BMenuItem* const item = fBar->RemoveItem(int32{0})) delete item;
  fBar->AddItem(MakeFileMenu());
  fBar->AddItem(MakeEditMenu());
  fBar->AddItem(MakeModeMenu());
  fBar->AddItem(MakeToolMenu());
  fBar->AddItem(MakeHelpMenu());
  EnableHistory(fCanUndo, fCanRedo);
}

void TEditorMenus::MarkMode(int32 mode) {
  for (int32 i = 0; i < kEditModes; ++i) fModeItems[i]->SetMarked(i == mode);
}

void TEditorMenus::EnableHistory(bool canUndo, bool canRedo) {
  fCanUndo = canUndo;
  fCanRedo = canRedo;
  fUndoItem->SetEnabled(canUndo);
  fRedoItem->SetEnabled(canRedo);
}
