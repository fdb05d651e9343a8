/** Saving the document, and asking before unsaved changes are lost. */

#include "common/koreva.h"
#include "document/document_file.h"
#include "document/document_recovery.h"
#include "document/edit_session.h"
#include "document/editor_view.h"
#include "document/player_copier.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/storage/file.h"
#include "platform/storage/node_info.h"
#include "plugin/file_choices.h"
#include "plugin/message_codes.h"

namespace {

enum { kCancelButton, kNoButton, kYesButton };

long ask_about_changes(const entry_ref& file, const std::string& hint) {
  const std::string name = file.IsEmpty() ? gLLT->Text("New_Lyrics") : "\"" + file.name + "\"";
  return ask(name + gLLT->Text("Ask_Save") + (hint.empty() ? "" : "\n\n" + hint),
             {cancel_button(), text_button("Button_No", 'N'), text_button("Button_Yes", 'Y')});
}

} // namespace

bool TVesmoEView::AskSave(const BMessage& next, const BHandler* target) {
  const bool isModified = fSession->Active().IsModified();
  // Text without changes is lost as well when its file has gone.
  const std::string whyAsked = !isModified && fFile->IsGone() ? gLLT->Text("Hint_File_Gone") : std::string();
  if (!isModified && whyAsked.empty()) return true;
  if (!fSaveIsPending) {
    const long answer = ask_about_changes(fDocument.File(), whyAsked);
    if (answer == kNoButton) fRecovery->AllowLoss();
    if (answer == kNoButton) return true;
    fSaveIsPending = answer == kYesButton;
  }
  if (fSaveIsPending) {
    BMessage save(kMsgSave);
    koreva::add_next_msg(&save, next, target);
    Window()->PostMessage(&save, this);
  }
  return false;
}

void TVesmoEView::MItemSaveClicked(const BMessage& message) {
  fSaveIsPending = false;
  if (fDocument.File().IsEmpty()) {
    BMessage saveAs(message);
    saveAs.what = kMsgSaveAs;
    Window()->PostMessage(&saveAs);
  } else if (SaveAndVerify(InfoToSave(), Dialect())) {
    ReportSaved();
    koreva::invoke_next_msg(&message);
  }
}

/** A foreign encoding is replaced by UTF-8 if the user prefers that. */
TLyricsInfo TVesmoEView::InfoToSave() const {
  TLyricsInfo info = fDocument.Info();
  if (is_foreign(fDocument.Form().encoding) && load_file_choices().savesForeignAsUtf8)
    info.Encoding = static_cast<long>(TEncoding::kUtf8);
  return info;
}

bool TVesmoEView::IsForAnotherDocument(const BMessage& answer) const {
  int32 number = 0;
  if (answer.FindInt32("Document", &number) != B_OK || number == fDocument.Number()) return false;
  tell(gLLT->Text("Err_Panel_Of_Another"));
  return true;
}

void TVesmoEView::SaveRequested(const BMessage& message) {
  TLyricsInfo info = fDocument.Info();
  int32 number = 0;
  if (IsForAnotherDocument(message)) return;
  if (message.FindInt32("CRType", &number) == B_OK) info.CRType = cvt_enum_cr_type_to_ct(number);
  if (message.FindInt32("Encoding", &number) == B_OK) info.Encoding = static_cast<long>(any_encoding_of(number));
  const bool hasDialect = message.FindInt32("Dialect", &number) == B_OK;
  const TDialect dialect = hasDialect ? dialect_of(number) : Dialect();
  koreva::get_save_ref(&message, &info.File);
  if (info.File.IsEmpty() || info.File.directory.empty() || !SaveAndVerify(info, dialect)) return;
  SendAddHistoryRqtd();
  SetWinTitle();
  ReportSaved();
  koreva::invoke_next_msg(&message);
}

status_t TVesmoEView::SaveLyrics(const TLyricsInfo& info, TDialect dialect) {
  fSession->Active().FlushEdits();
  fSaver.Write(fDocument.PlanSave(info.File, {any_encoding_of(info.Encoding), line_end_of(info.CRType), dialect}, {}));
  BFile file(info.File.FullPath().c_str(), B_READ_WRITE);
  if (file.InitCheck() == B_OK) SetLyricsMimeType(&file);
  fSession->Active().SetModified(false);
  return B_OK;
}

/** The save itself always reports success; only the file on the disk proves it. */
bool TVesmoEView::SaveAndVerify(TLyricsInfo info, TDialect dialect) {
  fSession->Active().FlushEdits();
  if (!fFile->MaySave(&info, dialect)) return false;
  SaveLyrics(info, dialect);
  const bool isSaved = fSaver.Verify();
  if (!isSaved) fSession->Active().SetModified(true);
  fFile->Follow();
  return isSaved;
}

void TVesmoEView::ReportSaved() {
  SetStatBarStr((gLLT->Text("StatBarStr_Saved_Lyrics") + fFile->SaveReport() + fCopier->Renew()).c_str());
}

void TVesmoEView::SetLyricsMimeType(BFile* file) {
  BNodeInfo info(file);
  std::string type;
  if (info.GetType(&type) == B_ENTRY_NOT_FOUND) info.SetType("text/plain");
}
