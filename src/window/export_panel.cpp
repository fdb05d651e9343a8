#include "window/export_panel.h"

#include "document/editor_view.h"
#include "language/llt.h"
#include "lyrics/export.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/window.h"
#include "platform/storage/entry.h"
#include "plugin/message_codes.h"

#include <algorithm>
#include <utility>

TExportPanel::TExportPanel(const BMessenger& target, const BMessage& answer, const std::string& folder,
                           std::string name)
    : BFilePanel(B_SAVE_PANEL, &target), fName(std::move(name)),
      fFormatMenu(new BMenu(gLLT->Text("Menu_Export_Format"))) {
  fFormatMenu->SetRadioMode(true);
  for (int i = 0; i < kExportFormats; ++i) {
    const std::string key = "MItem_Export_Format_" + std::to_string(i);
    auto* const item = new BMenuItem(gLLT->Text(key.c_str()), new BMessage(kMsgExportFormat));
    item->SetTarget(target);
    fFormatMenu->AddItem(item);
  }
  SetMessage(&answer);
  SetPanelDirectory(folder.c_str());
  SetTitle(gLLT->Text("Export_Panel_Title"));
  SetButtonLabel(B_CANCEL_BUTTON, gLLT->Text("Button_Cancel"));
  SetButtonLabel(B_DEFAULT_BUTTON, gLLT->Text("Button_Save"));
  if (!Window()->Lock()) return;
  static_cast<BMenuBar*>(Window()->FindView("MenuBar"))->AddItem(fFormatMenu);
  fFormatMenu->ItemAt(0)->SetMarked(true);
  Window()->Unlock();
  ProposeName();
}

/** Call with the window's lock held. */
int32 TExportPanel::Format() const {
  return std::max(fFormatMenu->IndexOf(fFormatMenu->FindMarked()), int32{0});
}

void TExportPanel::ProposeName() {
  if (!Window()->Lock()) return;
  const int32 format = Format();
  Window()->Unlock();
  entry_ref folder;
  GetPanelDirectory(&folder);
  const entry_ref plain = {folder.FullPath(), plain_export_name(fName)};
  const bool isFree = !folder.IsEmpty() && !BEntry(&plain).Exists();
  const bool isPlain = isFree && static_cast<TExportFormat>(format) == TExportFormat::kDotted;
  SetSaveText((isPlain ? plain.name : export_name(fName, static_cast<TExportFormat>(format))).c_str());
}

void TExportPanel::SendMessage(const BMessenger* target, BMessage* message) {
  message->RemoveName("Format"); // from the previous export
  message->AddInt32("Format", Format());
  BFilePanel::SendMessage(target, message);
}
