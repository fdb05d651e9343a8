#include "window/recent_files.h"

#include "common/koreva.h"
#include "document/lyrics_opener.h"
#include "document/notice.h"
#include "interapp/inter_app_prefs.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/menu.h"
#include "platform/interface/menu_item.h"
#include "platform/storage/entry.h"
#include "platform/storage/entry_ref.h"
#include "plugin/message_codes.h"
#include "window/editor_menus.h"

#include <utility>

namespace {

bool find_archive(BEntry* entry) {
  return koreva::get_entry("VesmoE_MRU.arc", entry, koreva::kSettingsDir, "VesmoE");
}

std::string path_in(const BMessage& message) {
  entry_ref ref;
  return message.FindRef("refs", &ref) == B_OK ? ref.FullPath() : std::string();
}

} // namespace

TRecentFiles::TRecentFiles(BHandler* opener, const TEditorMenus* menus, TNoticeBoard* notices)
    : fMenus(menus), fNotices(notices) {
  fMRUF.SetShowSC(true);
  fMRUF.SetMaxMRUF(10);
  fMRUF.SetTgtHandler(opener);
  auto* const open = new BMessage(B_REFS_RECEIVED);
  open->AddBool(kFromRecentFiles, true);
  fMRUF.SetMessage(open);
  BEntry archive;
  if (find_archive(&archive)) fMRUF.Load(archive);
}

bool TRecentFiles::Handle(const BMessage& message) {
  switch (message.what) {
  case kMsgClearHistory:
    MItemDelAllMRUFClicked();
    return true;
  case kMsgAddHistory:
    AddHistoryRqtd(message);
    return true;
  case kMsgRemoveHistory:
    RemoveHistoryRqtd(message);
    return true;
  default:
    return false;
  }
}

void TRecentFiles::GenerateMenuMRUF() {
  std::string format;
  gIAP->GetString("AccKeyFormat", &format);
  fMRUF.SetSeparator(format);
  fMRUF.SetTgtMenu(fMenus->OpenMenu());
  fMRUF.GenerateMenu();
  fMenus->OpenMenu()->FindItem(kMsgClearHistory)->SetEnabled(fMRUF.CountMRUFs() > 0);
  SaveMRUF();
}

/** Reported once, until it works again. */
void TRecentFiles::SaveMRUF() {
  BEntry archive;
  const bool isSaved = find_archive(&archive) && fMRUF.Save(archive);
  if (isSaved) fNotices->RemoveNotice(kRecentFilesNotice);
  if (std::exchange(fIsSaved, isSaved) && !isSaved) {
    TNotice notice;
    notice.id = kRecentFilesNotice;
    notice.text = gLLT->Text("Notice_Recent_Not_Saved");
    fNotices->ShowNotice(notice);
  }
}

void TRecentFiles::AddHistoryRqtd(const BMessage& message) {
  const std::string path = path_in(message);
  if (path.empty()) return;
  fMRUF.AddMRUF(path.c_str());
  GenerateMenuMRUF();
}

void TRecentFiles::RemoveHistoryRqtd(const BMessage& message) {
  const std::string path = path_in(message);
  if (path.empty()) return;
  delete[] fMRUF.RemoveMRUF(path.c_str());
  GenerateMenuMRUF();
}

void TRecentFiles::MItemDelAllMRUFClicked() {
  const std::string question = gLLT->Text("Ask_Del_All_MRUF") + std::string("\n\n") + gLLT->Text("Hint_Del_One_MRUF");
  enum { kClearButton };
  if (ask(question, {text_button("Button_Del_All", 'A'), text_button("Button_No", 'N', true)}) != kClearButton) return;
  fMRUF.ClearMRUF();
  GenerateMenuMRUF();
}
