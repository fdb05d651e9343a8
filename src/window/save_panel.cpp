#include "window/save_panel.h"

#include "language/llt.h"
#include "lyrics/foreign_encoding.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/window.h"

#include <string>

namespace {

constexpr int32 kChoices = 3;

/** A radio menu; the items' language keys are `keyStart` plus their index. */
BMenu* radio_menu(const char* title, const std::string& keyStart, int32 choices = kChoices) {
  auto* const menu = new BMenu(title);
  menu->SetRadioMode(true);
  for (int32 i = 0; i < choices; ++i)
    menu->AddItem(new BMenuItem(gLLT->Text((keyStart + std::to_string(i)).c_str()), nullptr));
  return menu;
}

void put(BMessage* message, const char* field, int32 number) {
  message->RemoveName(field); // from the previous save
  message->AddInt32(field, number);
}

int32 marked(const BMenu& menu) {
  return menu.IndexOf(menu.FindMarked());
}

} // namespace

TVesmoESavePanel::TVesmoESavePanel(const BMessenger& target)
    : BFilePanel(B_SAVE_PANEL, &target), fCRTypeMenu(radio_menu("Return Code", "MItem_CR_Type_")),
      fEncodingMenu(radio_menu("Encoding", "MItem_Encoding_")),
      fDialectMenu(radio_menu(gLLT->Text("Menu_Dialect"), "MItem_Dialect_", kDialects)) {
  CreateMenu();
}

void TVesmoESavePanel::CreateMenu() {
  if (!Window()->Lock()) return;
  auto* const bar = static_cast<BMenuBar*>(Window()->FindView("MenuBar"));
  bar->AddItem(fEncodingMenu);
  bar->AddItem(fCRTypeMenu);
  bar->AddItem(fDialectMenu);
  SetEncoding(0);
  SetCRType(0);
  SetDialect(0);
  Window()->Unlock();
}

void TVesmoESavePanel::SetEncoding(int32 encoding) {
  fForeign = encoding;
  const char* const foreign = foreign_name(static_cast<TEncoding>(encoding));
  if (!Window()->Lock()) return;
  while (fEncodingMenu->CountItems() > kChoices) delete fEncodingMenu->RemoveItem(kChoices);
  if (foreign) fEncodingMenu->AddItem(new BMenuItem(foreign, nullptr));
  Window()->Unlock();
  Mark(fEncodingMenu, foreign ? kChoices : encoding);
}

void TVesmoESavePanel::SetCRType(int32 crType) {
  Mark(fCRTypeMenu, crType);
}

void TVesmoESavePanel::SetDialect(int32 dialect) {
  Mark(fDialectMenu, dialect);
}

void TVesmoESavePanel::Mark(const BMenu* menu, int32 index) const {
  if (!Window()->Lock()) return;
  if (BMenuItem* const item = menu->ItemAt(index)) item->SetMarked(true);
  Window()->Unlock();
}

void TVesmoESavePanel::SendMessage(const BMessenger* target, BMessage* message) {
  const int32 encoding = marked(*fEncodingMenu);
  put(message, "Encoding", encoding == kChoices ? fForeign : encoding);
  put(message, "CRType", marked(*fCRTypeMenu));
  put(message, "Dialect", marked(*fDialectMenu));
  BFilePanel::SendMessage(target, message);
}
