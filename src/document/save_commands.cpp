#include "document/save_commands.h"

#include "common/koreva.h"
#include "document/document_answer.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_recovery.h"
#include "document/edit_session.h"
#include "document/player_copier.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/word_lines.h"
#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "platform/storage/file.h"
#include "platform/storage/node_info.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {

enum { kCancelButton, kNoButton, kYesButton };

long ask_about_changes(const entry_ref& file, const std::string& hint) {
  const std::string name = file.IsEmpty() ? gLLT->Text("New_Lyrics") : "\"" + file.name + "\"";
  return ask(name + gLLT->Text("Ask_Save") + (hint.empty() ? "" : "\n\n" + hint),
             {cancel_button(), text_button("Button_No", 'N'), text_button("Button_Yes", 'Y')});
}

} // namespace

bool TSaveCommands::Handle(const BMessage& message) {
  switch (message.what) {
  case kMsgSave:
    MItemSaveClicked(message);
    return true;
  case B_SAVE_REQUESTED:
    SaveRequested(message);
    return true;
  default:
    return false;
  }
}

bool TSaveCommands::AskSave(const BMessage& next, const BHandler* target) {
  const bool isModified = fParts.session->Active().IsModified();
  // Text without changes is lost as well when its file has gone.
  const std::string whyAsked = !isModified && fParts.file->IsGone() ? gLLT->Text("Hint_File_Gone") : std::string();
  if (!isModified && whyAsked.empty()) return true;
  if (!fSaveIsPending) {
    const long answer = ask_about_changes(fParts.document->File(), whyAsked);
    if (answer == kNoButton) fParts.recovery->AllowLoss();
    if (answer == kNoButton) return true;
    fSaveIsPending = answer == kYesButton;
  }
  if (fSaveIsPending) {
    BMessage save(kMsgSave);
    koreva::add_next_msg(&save, next, target);
    fOwner->Window()->PostMessage(&save, fOwner);
  }
  return false;
}

void TSaveCommands::MItemSaveClicked(const BMessage& message) {
  fSaveIsPending = false;
  if (fParts.document->File().IsEmpty()) {
    BMessage saveAs(message);
    saveAs.what = kMsgSaveAs;
    fOwner->Window()->PostMessage(&saveAs);
  } else if (SaveAndVerify(InfoToSave(), fParts.document->Form().dialect)) {
    ReportSaved();
    koreva::invoke_next_msg(&message);
  }
}

/** A foreign encoding is replaced by UTF-8 if the user prefers that. */
TLyricsInfo TSaveCommands::InfoToSave() const {
  TLyricsInfo info = fParts.document->Info();
  if (is_foreign(fParts.document->Form().encoding) && gPref->Values()->savesForeignAsUtf8)
    info.Encoding = static_cast<long>(TEncoding::kUtf8);
  return info;
}

void TSaveCommands::SaveRequested(const BMessage& message) {
  TLyricsInfo info = fParts.document->Info();
  int32 number = 0;
  if (is_for_another_document(message, *fParts.document)) return;
  if (message.FindInt32("CRType", &number) == B_OK) info.CRType = cvt_enum_cr_type_to_ct(number);
  if (message.FindInt32("Encoding", &number) == B_OK) info.Encoding = static_cast<long>(any_encoding_of(number));
  const bool hasDialect = message.FindInt32("Dialect", &number) == B_OK;
  const TDialect dialect = hasDialect ? dialect_of(number) : fParts.document->Form().dialect;
  koreva::get_save_ref(&message, &info.File);
  if (info.File.IsEmpty() || info.File.directory.empty() || !SaveAndVerify(info, dialect)) return;
  fParts.loader->Renamed();
  ReportSaved();
  koreva::invoke_next_msg(&message);
}

status_t TSaveCommands::SaveLyrics(const TLyricsInfo& info, TDialect dialect) {
  fParts.session->Active().FlushEdits();
  fSaver.Write(
      fParts.document->PlanSave(info.File, {any_encoding_of(info.Encoding), line_end_of(info.CRType), dialect}, {}));
  BFile file(info.File.FullPath().c_str(), B_READ_WRITE);
  if (file.InitCheck() == B_OK) SetLyricsMimeType(&file);
  fParts.session->Active().SetModified(false);
  return B_OK;
}

bool TSaveCommands::RewriteWords(TDialect dialect) {
  const TDocument& document = *fParts.document;
  fHasCutTimes = false;
  if (dialect == document.Form().dialect) return false;
  const bool toCommon = dialect == TDialect::kCommon;
  std::list<std::string> lines = document.CopyLines();
  fHasCutTimes = write_words_as(toCommon ? TWordForm::kCommon : TWordForm::kFamily, &lines);
  if (!toCommon) {
    const std::vector<std::string> inFile = written_as_common(document.Lines(), document.Source());
    fHasCutTimes |= has_thousandths({inFile.begin(), inFile.end()});
  }
  if (std::ranges::equal(lines, document.Lines())) return false;
  fParts.session->Rewrite([&lines](std::list<std::string>* rewritten) { *rewritten = lines; });
  return true;
}

/** The save itself always reports success; only the file on the disk proves it. */
bool TSaveCommands::SaveAndVerify(TLyricsInfo info, TDialect dialect) {
  fParts.session->Active().FlushEdits();
  if (!fParts.file->MaySave(&info, dialect)) return false;
  const bool hasRewritten = RewriteWords(dialect);
  SaveLyrics(info, dialect);
  const bool isSaved = fSaver.Verify();
  if (!isSaved && hasRewritten) fParts.session->Undo();
  if (!isSaved) fParts.session->Active().SetModified(true);
  fParts.file->Follow();
  return isSaved;
}

void TSaveCommands::ReportSaved() {
  fParts.session->Report(gLLT->Text("StatBarStr_Saved_Lyrics") +
                         std::string(fHasCutTimes ? gLLT->Text("StatBarStr_Thousandths_Cut") : "") +
                         fParts.file->SaveReport() + fParts.copier->Renew());
}

void TSaveCommands::SetLyricsMimeType(BFile* file) {
  BNodeInfo info(file);
  std::string type;
  if (info.GetType(&type) == B_ENTRY_NOT_FOUND) info.SetType("text/plain");
}
