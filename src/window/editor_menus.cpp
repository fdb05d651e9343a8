#include "window/editor_menus.h"

#include "commands/key_bindings.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "lyrics/foreign_encoding.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/menu_item.h"
#include "plugin/message_codes.h"

namespace {

using enum TCommandId;

std::string label_of(const char* key, const char* letter) {
  return accelerator_label(letter, gLLT->Text(key));
}

std::string label_of(TCommandId id) {
  return label_of(command(id).textKey, command(id).letter);
}

} // namespace

BHandler* TEditorMenus::Target(TCommandId id) const {
  switch (command(id).target) {
  case TCommandTarget::kWindow:
    return fTargets.window;
  case TCommandTarget::kManager:
    return fTargets.manager;
  case TCommandTarget::kView:
  case TCommandTarget::kTagInput:
    break;
  }
  return fTargets.view;
}

BMenuItem* TEditorMenus::Adopt(TCommandId id, BMenuItem* item) {
  item->SetTarget(BMessenger(Target(id)));
  item->SetKeys(fKeys->Of(id), command(id).target == TCommandTarget::kTagInput);
  fItems[static_cast<size_t>(id)] = item;
  return item;
}

BMenuItem* TEditorMenus::MakeItem(TCommandId id) {
  return Adopt(id, new BMenuItem(label_of(id).c_str(), new BMessage(message_of_command(id))));
}

BMenuItem* TEditorMenus::MakeItem(TCommandId id, BMenu* submenu) {
  return Adopt(id, new BMenuItem(submenu, new BMessage(message_of_command(id))));
}

BMenuItem* TEditorMenus::MakeOpenSubmenu() {
  fOpenMenu = new BMenu(label_of(kOpen).c_str());
  fOpenMenu->AddSeparatorItem();
  auto* const clear = new BMenuItem(label_of("MItem_Del_All_MRUF", "D").c_str(), new BMessage(kMsgClearHistory));
  clear->SetTarget(BMessenger(fTargets.window));
  fOpenMenu->AddItem(clear);
  // Choosing the item itself opens the panel; the submenu lists the recent files.
  return MakeItem(kOpen, fOpenMenu);
}

BMenu* TEditorMenus::MakeReopenMenu() {
  auto* const menu = new BMenu(label_of("Menu_Reopen_As", "R").c_str());
  const auto add = [this, menu](const std::string& label, TEncoding encoding) {
    auto* const item = new BMenuItem(label.c_str(), new BMessage(kMsgReopenAs));
    item->Message()->AddInt32("Encoding", static_cast<int32>(encoding));
    item->SetTarget(BMessenger(fTargets.view));
    menu->AddItem(item);
  };
  for (int32 i = 0; i < 3; ++i) add(gLLT->Text(("MItem_Encoding_" + std::to_string(i)).c_str()), encoding_of(i));
  menu->AddSeparatorItem();
  for (const TForeignEncoding& foreign : foreign_encodings()) add(foreign.name, foreign.encoding);
  return menu;
}

BMenu* TEditorMenus::MakeFileMenu() {
  auto* const menu = new BMenu(label_of("Menu_File", "F").c_str());
  menu->AddItem(MakeItem(kNew));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem(kOpenCurrent));
  menu->AddItem(MakeOpenSubmenu());
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem(kSave));
  menu->AddItem(MakeItem(kSaveAs));
  menu->AddItem(MakeItem(kExport));
  menu->AddItem(MakeItem(kCopyForPlayers));
  menu->AddItem(MakeItem(kWriteIntoSong));
  menu->AddSeparatorItem();
  menu->AddItem(MakeReopenMenu());
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem(kClose));
  return menu;
}

BMenuItem* TEditorMenus::MakeLinesMenu() {
  auto* const menu = new BMenu(label_of("Menu_Lines", "L").c_str());
  for (const TCommandId id : {kInsertLine, kDeleteLines, kMoveLinesUp, kMoveLinesDown, kJoinLines, kSplitLine})
    menu->AddItem(MakeItem(id));
  return new BMenuItem(menu);
}

BMenu* TEditorMenus::MakeEditMenu() {
  auto* const menu = new BMenu(label_of("Menu_Edit", "E").c_str());
  menu->AddItem(MakeItem(kUndo));
  menu->AddItem(MakeItem(kRedo));
  menu->AddSeparatorItem();
  for (const TCommandId id : {kCut, kCopy, kPaste, kSelectAll}) menu->AddItem(MakeItem(id));
  fLinesItem = MakeLinesMenu();
  menu->AddItem(fLinesItem);
  for (const TCommandId id : {kFind, kReplace, kFindNext, kFindPrevious}) menu->AddItem(MakeItem(id));
  menu->AddItem(MakeGoMenu());
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem(kShiftAll));
  menu->AddItem(MakeItem(kShiftFromHere));
  menu->AddItem(MakeItem(kShiftSelected));
  menu->AddItem(MakeItem(kPropose));
  menu->AddItem(MakeItem(kDeleteAllTags));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem(kToExtended));
  menu->AddItem(MakeItem(kToStandard));
  return menu;
}

BMenu* TEditorMenus::MakeWordsMenu() {
  auto* const menu = new BMenu(label_of("Menu_Words", "O").c_str());
  for (const TCommandId id : {kJoinWords, kSplitWord, kClearWords, kUnstampFromHere, kCopyWordTimes})
    menu->AddItem(MakeItem(id));
  return menu;
}

BMenu* TEditorMenus::MakeListenMenu() {
  auto* const menu = new BMenu(label_of("Menu_Listen", "L").c_str());
  for (const TCommandId id : {kHearBefore, kHearStart, kHearLine, kHearFrom, kHearLoop}) menu->AddItem(MakeItem(id));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem(kClicks));
  menu->AddItem(MakeItem(kCountIn));
  return menu;
}

BMenu* TEditorMenus::MakeModeMenu() {
  auto* const tagInput = new BMenu(label_of("Menu_Tag_Input_Mode", "T").c_str());
  tagInput->AddItem(MakeItem(kModeExtended));
  tagInput->AddItem(MakeItem(kModeStandard));
  auto* const tagInputItem = new BMenuItem(tagInput, new BMessage(message_of_command(kModeExtended)));
  tagInputItem->SetTarget(BMessenger(fTargets.view));
  auto* const menu = new BMenu(label_of("Menu_Mode", "M").c_str());
  menu->AddItem(tagInputItem);
  menu->AddItem(MakeItem(kModeFree));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem(kWordByWord));
  menu->AddItem(MakeWordsMenu());
  menu->AddSeparatorItem();
  menu->AddItem(MakeListenMenu());
  return menu;
}

BMenu* TEditorMenus::MakeGoMenu() {
  auto* const menu = new BMenu(label_of("Menu_Go", "G").c_str());
  menu->AddItem(MakeItem(kFollow));
  menu->AddItem(MakeItem(kShowClock));
  menu->AddItem(MakeItem(kShowLane));
  menu->AddItem(MakeItem(kLaneWave));
  menu->AddItem(MakeItem(kGoToSung));
  menu->AddItem(MakeItem(kFromStart));
  menu->AddSeparatorItem();
  for (const TCommandId id : {kNextProblem, kPreviousProblem, kNextUntagged, kPreviousUntagged})
    menu->AddItem(MakeItem(id));
  return menu;
}

BMenu* TEditorMenus::MakeToolMenu() {
  auto* const menu = new BMenu(label_of("Menu_Tool", "T").c_str());
  menu->AddItem(MakeItem(kPreferences));
  menu->AddItem(MakeItem(kCommonPreferences));
  return menu;
}

BMenu* TEditorMenus::MakeHelpMenu() {
  auto* const menu = new BMenu(label_of("Menu_Help", "H").c_str());
  menu->AddItem(MakeItem(kHelp));
  menu->AddSeparatorItem();
  menu->AddItem(MakeItem(kAbout));
  return menu;
}

void TEditorMenus::Build() {
  while (BMenuItem* const item = fBar->RemoveItem(int32{0})) delete item;
  fKeys = current_keys();
  fItems = {};
  fBar->AddItem(MakeFileMenu());
  fBar->AddItem(MakeEditMenu());
  fBar->AddItem(MakeModeMenu());
  fBar->AddItem(MakeToolMenu());
  fBar->AddItem(MakeHelpMenu());
  for (const auto& [id, isOn] : fMarks) Item(id)->SetMarked(isOn);
  EnableHistory(fCanUndo, fCanRedo);
}

void TEditorMenus::MarkMode(int32 mode) {
  constexpr TCommandId kModes[] = {kModeExtended, kModeStandard, kModeFree};
  for (int32 i = 0; i < kEditModes; ++i) Item(kModes[i])->SetMarked(i == mode);
  fLinesItem->SetEnabled(edit_mode_of(mode) != TEditMode::kFreeEdit);
}

void TEditorMenus::Mark(TCommandId id, bool isOn) {
  fMarks[id] = isOn;
  Item(id)->SetMarked(isOn);
}

void TEditorMenus::EnableHistory(bool canUndo, bool canRedo) {
  fCanUndo = canUndo;
  fCanRedo = canRedo;
  Item(kUndo)->SetEnabled(canUndo);
  Item(kRedo)->SetEnabled(canRedo);
}
