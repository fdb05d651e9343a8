/** The editor view's ways to save lyrics, and to ask before they are lost. */

#include "common/atomic_replace.h"
#include "common/koreva.h"
#include "common/safety_copy.h"
#include "document/document_teller.h"
#include "document/editor_view.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/storage/file.h"
#include "platform/storage/node_info.h"
#include "platform/support/log.h"

#include <utility>

namespace {
enum { kCancelButton, kNoButton, kYesButton };
}

bool TVesmoEView::AskSave(const BMessage& next, const BHandler* target) {
  if (!fActive->IsModified()) return true;
  if (!fSaveWaits) {
    const long answer = AskAboutChanges();
    if (answer == kNoButton) return true;
    fSaveWaits = answer == kYesButton;
  }
  if (fSaveWaits) {
    BMessage save(kMsgSave);
    koreva::add_next_msg(&save, next, target);
    Window()->PostMessage(&save, this);
  }
  return false;
}

long TVesmoEView::AskAboutChanges() const {
  const std::string name = fInfo.File.IsEmpty() ? gLLT->Text("New_Lyrics") : "\"" + fInfo.File.name + "\"";
  return ask(name + gLLT->Text("Ask_Save"),
             {text_button("Button_Cancel", 'C', true), text_button("Button_No", 'N'), text_button("Button_Yes", 'Y')});
}

void TVesmoEView::MItemSaveClicked(const BMessage& message) {
  fSaveWaits = false;
  if (fInfo.File.IsEmpty()) {
    BMessage saveAs(message);
    saveAs.what = kMsgSaveAs;
    Window()->PostMessage(&saveAs);
    return;
  }
  SaveLyrics(fInfo);
  if (!IsOnDisk(fInfo)) return;
  SetStatBarStr(gLLT->Text("StatBarStr_Saved_Lyrics"));
  koreva::invoke_next_msg(&message);
}

void TVesmoEView::SaveRequested(const BMessage& message) {
  TLyricsInfo info = fInfo;
  int32 number = 0;
  if (message.FindInt32("CRType", &number) == B_OK) info.CRType = cvt_enum_cr_type_to_ct(number);
  if (message.FindInt32("Encoding", &number) == B_OK) info.Encoding = number >= 0 && number <= 2 ? number : 0;
  koreva::get_save_ref(&message, &info.File);
  if (info.File.IsEmpty() || info.File.directory.empty() || SaveLyrics(info) != B_OK || !IsOnDisk(info)) return;
  fInfo = info;
  fTeller->DocumentChanged();
  SendAddHistoryRqtd();
  SetWinTitle();
  SetStatBarStr(gLLT->Text("StatBarStr_Saved_Lyrics"));
  koreva::invoke_next_msg(&message);
}

status_t TVesmoEView::SaveLyrics(const TLyricsInfo& info) {
  const std::string path = info.File.FullPath();
  fActive->FlushEdits();
  std::list<std::string> lines;
  fActive->GetLines(&lines);
  NoteOutside(lines, info);
  fWritten = lines_to_bytes(lines, info.CRType, info.Encoding);
  if (!fIsWhole && info.File == fInfo.File) KeepFileAsItWas();
  if (atomic_replace(path, fWritten) != B_OK) log_error("save", path + " could not be written");
  BFile file(path.c_str(), B_READ_WRITE);
  if (file.InitCheck() == B_OK) SetLyricsMimeType(&file);
  MarkSaved();
  return B_OK;
}

/** What a save claims is checked against the disk; when the lyrics are not there, they are kept elsewhere, the user is
    told where, and the document still counts as changed. */
bool TVesmoEView::IsOnDisk(const TLyricsInfo& info) {
  const std::string path = info.File.FullPath();
  // What was written, not what the text is by now: the user may be typing on.
  const std::string bytes = std::exchange(fWritten, {});
  if (file_holds(path, bytes)) {
    fIsWhole = true;
    TellLosses(info);
    return true;
  }
  MarkChanged();
  const std::string kept = keep_for_recovery(path, bytes);
  const std::string where =
      kept.empty() ? gLLT->Text("Hint_Not_Recovered") : gLLT->Text("Hint_Recovered") + ("\n" + kept);
  tell(gLLT->Text("Err_Cannot_Save_Lyrics") + ("\n" + path) + "\n\n" + where);
  return false;
}

void TVesmoEView::SetLyricsMimeType(BFile* file) {
  BNodeInfo info(file);
  std::string type;
  if (info.GetType(&type) == B_ENTRY_NOT_FOUND) info.SetType("text/plain");
}
