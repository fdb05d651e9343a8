#include "window/editor_panels.h"

#include "common/koreva.h"
#include "document/editor_view.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "platform/storage/entry.h"
#include "platform/storage/find_directory.h"
#include "plugin/exit_state.h"
#include "plugin/message_codes.h"

namespace {

/** A visible panel's thread has precedence over the editor's others. */
constexpr int32 kShownPriority = 15;
constexpr int32 kHiddenPriority = 5;

void set_priority(const BFilePanel& panel, int32 priority) {
  set_thread_priority(panel.Window()->Thread(), priority);
}

/** Empty if unknown. */
std::string folder_of(const BFilePanel& panel) {
  entry_ref folder;
  panel.GetPanelDirectory(&folder);
  return folder.IsEmpty() ? std::string() : folder.FullPath();
}

} // namespace

bool TEditorPanels::Handle(const BMessage& message) {
  switch (message.what) {
  case kMsgOpenPanel:
    MItemOpenClicked();
    return true;
  case kMsgSaveAs:
    MItemSaveAsClicked(message);
    return true;
  case kMsgExport:
    MItemExportClicked();
    return true;
  case kMsgExportFormat:
    if (fExportPanel) fExportPanel->ProposeName();
    return true;
  case B_CANCEL:
    PanelClosed(message);
    return true;
  default:
    return false;
  }
}

void TEditorPanels::LanguageChanged() {
  SetOpenPanelLabel();
  SetSavePanelLabel();
}

std::string TEditorPanels::PanelFolder() const {
  if (BEntry(gExitState->fPanelFolder.c_str()).IsDirectory()) return gExitState->fPanelFolder;
  BPath home;
  find_directory(B_USER_DIRECTORY, &home);
  return home.Path();
}

std::vector<std::string> TEditorPanels::Places() const {
  return {fView->CurrentLyricsInfo().File.directory, fView->SongFolder()};
}

void TEditorPanels::SetOpenPanelLabel() {
  if (!fOpenPanel) return;
  fOpenPanel->SetTitle(gLLT->Text("Open_Panel_Title"));
  fOpenPanel->SetButtonLabel(B_CANCEL_BUTTON, gLLT->Text("Button_Cancel"));
  fOpenPanel->SetButtonLabel(B_DEFAULT_BUTTON, gLLT->Text("Button_Open"));
}

void TEditorPanels::SetSavePanelLabel() {
  if (!fSavePanel) return;
  fSavePanel->SetTitle(gLLT->Text("Save_Panel_Title"));
  fSavePanel->SetButtonLabel(B_CANCEL_BUTTON, gLLT->Text("Button_Cancel"));
  fSavePanel->SetButtonLabel(B_DEFAULT_BUTTON, gLLT->Text("Button_Save"));
}

void TEditorPanels::MItemOpenClicked() {
  if (!fOpenPanel) {
    const BMessenger answers(fOwner);
    fOpenPanel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &answers);
  }
  SetOpenPanelFolder(PanelFolder());
  SetOpenPanelLabel();
  fOpenPanel->SetPlaces(Places());
  set_priority(*fOpenPanel, kShownPriority);
  fOpenPanel->Show();
}

void TEditorPanels::MItemSaveAsClicked(const BMessage& message) {
  if (!fSavePanel) fSavePanel = std::make_unique<TVesmoESavePanel>(BMessenger(fOwner));
  SetSavePanelFolder(PanelFolder());
  SetSavePanelLabel();
  BMessage save(B_SAVE_REQUESTED);
  save.AddInt32("Document", fView->DocumentNumber());
  BMessage next;
  void* target = nullptr;
  if (!koreva::copy_next_msg(&save, message) && message.FindMessage("NxtM", &next) == B_OK &&
      message.FindPointer("NxtMT", &target) == B_OK && !message.IsSourceRemote()) {
    koreva::add_next_msg(&save, next, static_cast<const BHandler*>(target));
  }
  fSavePanel->SetMessage(&save);
  const TLyricsInfo info = fView->CurrentLyricsInfo();
  fSavePanel->SetEncoding(static_cast<int32>(info.Encoding));
  fSavePanel->SetCRType(static_cast<int32>(info.CRType));
  fSavePanel->SetDialect(static_cast<int32>(fView->Dialect()));
  SetSavePanelFileName();
  fSavePanel->SetPlaces(Places());
  set_priority(*fSavePanel, kShownPriority);
  fSavePanel->Show();
}

void TEditorPanels::SetSavePanelFileName() {
  fSavePanel->SetSaveText(DocumentName().c_str());
}

std::string TEditorPanels::DocumentName() const {
  const TLyricsInfo info = fView->CurrentLyricsInfo();
  return info.File.IsEmpty() ? gLLT->Text("New_Lyrics") + std::string(".lrc") : info.File.name;
}

void TEditorPanels::MItemExportClicked() {
  if (fExportPanel && fExportPanel->IsShowing()) return fExportPanel->Show(); // to the front
  BMessage answer(kMsgExportTo);
  answer.AddInt32("Document", fView->DocumentNumber());
  const TLyricsInfo info = fView->CurrentLyricsInfo();
  const bool hasFolder = !info.File.IsEmpty() && BEntry(info.File.directory.c_str()).IsDirectory();
  const std::string folder = hasFolder ? info.File.directory : PanelFolder();
  fExportPanel = std::make_unique<TExportPanel>(BMessenger(fOwner), answer, folder, DocumentName());
  fExportPanel->SetPlaces(Places());
  set_priority(*fExportPanel, kShownPriority);
  fExportPanel->Show();
}

bool TEditorPanels::IsOneShowing() const {
  for (const BFilePanel* panel :
       {fOpenPanel.get(), static_cast<BFilePanel*>(fSavePanel.get()), static_cast<BFilePanel*>(fExportPanel.get())})
    if (panel && panel->IsShowing()) return true;
  return false;
}

void TEditorPanels::PanelClosed(const BMessage& message) {
  void* source = nullptr;
  if (message.FindPointer("source", &source) != B_OK) return;
  // The pointer is only compared, never dereferenced.
  const BFilePanel* panel = nullptr;
  if (fSavePanel && source == static_cast<BFilePanel*>(fSavePanel.get())) panel = fSavePanel.get();
  if (fOpenPanel && source == fOpenPanel.get()) panel = fOpenPanel.get();
  // The folder of the export panel is not stored.
  if (fExportPanel && source == static_cast<BFilePanel*>(fExportPanel.get())) panel = fExportPanel.get();
  if (panel == nullptr) return;
  set_priority(*panel, kHiddenPriority);
  if (panel == fSavePanel.get()) SetSavePanelFolder(folder_of(*panel));
  if (panel == fOpenPanel.get()) SetOpenPanelFolder(folder_of(*panel));
  fOwner->Activate(true); // gives the focus back even without a window manager
}

void TEditorPanels::SetOpenPanelFolder(const std::string& folder) {
  if (folder.empty()) return;
  fOpenPanel->SetPanelDirectory(folder.c_str());
  gExitState->fPanelFolder = folder;
}

void TEditorPanels::SetSavePanelFolder(const std::string& folder) {
  if (folder.empty()) return;
  fSavePanel->SetPanelDirectory(folder.c_str());
  gExitState->fPanelFolder = folder;
}

void TEditorPanels::RememberFolders() const {
  for (const BFilePanel* panel : {fOpenPanel.get(), static_cast<BFilePanel*>(fSavePanel.get())}) {
    const std::string folder = panel ? folder_of(*panel) : std::string();
    if (!folder.empty()) gExitState->fPanelFolder = folder;
  }
}
