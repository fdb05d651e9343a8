#include "window/save_panel.h"

#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/window.h"

#include <string>

namespace {

constexpr int32 kChoices = 3;

/** A radio menu; the items' language keys are `keyStart` plus their index. */
BMenu* radio_menu(const char* title, const std::string& keyStart) {
  auto* const menu = new BMenu(title);
  menu->SetRadioMode(true);
  for (int32 i = 0; i < kChoices; ++i)
    menu->AddItem(new BMenuItem(gLLT->Text((keyStart + std::to_string(i)).c_str()), nullptr));
  return menu;
}

void put_marked(BMessage* message, const char* field, const BMenu& menu) {
  message->RemoveName(field); // from the previous save
  message->AddInt32(field, menu.IndexOf(menu.FindMarked()));
}

} // namespace

TVesmoESavePanel::TVesmoESavePanel(const BMessenger& target)
    : BFilePanel(B_SAVE_PANEL, &target), fCRTypeMenu(radio_menu("Return Code", "MItem_CR_Type_")),
      fEncodingMenu(radio_menu("Encoding", "MItem_Encoding_")) {
  CreateMenu();
}

void TVesmoESavePanel::CreateMenu() {
  if (!Window()->Lock()) return;
  auto* const bar = static_cast<BMenuBar*>(Window()->FindView("MenuBar"));
  bar->AddItem(fEncodingMenu);
  bar->AddItem(fCRTypeMenu);
  SetEncoding(0);
  SetCRType(0);
  Window()->Unlock();
}

void TVesmoESavePanel::SetEncoding(int32 encoding) {
  Mark(fEncodingMenu, encoding);
}

void TVesmoESavePanel::SetCRType(int32 crType) {
  Mark(fCRTypeMenu, crType);
}

void TVesmoESavePanel::Mark(const BMenu* menu, int32 index) const {
  if (!Window()->Lock()) return;
  if (BMenuItem* const item = menu->ItemAt(index)) item->SetMarked(true);
  Window()->Unlock();
}

void TVesmoESavePanel::SendMessage(const BMessenger* target, BMessage* message) {
  put_marked(message, "Encoding", *fEncodingMenu);
  put_marked(message, "CRType", *fCRTypeMenu);
  BFilePanel::SendMessage(target, message);
}
