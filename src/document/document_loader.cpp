#include "document/document_loader.h"

#include "common/app_info.h"
#include "document/document_file.h"
#include "document/document_recovery.h"
#include "document/edit_session.h"
#include "document/form_offers.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <utility>

namespace {

TLyricsForm form_of_new_documents() {
  const auto settings = gPref->Values();
  return {encoding_of(settings->writeEncoding), line_end_of(settings->writeCRType), dialect_of(settings->newDialect)};
}

} // namespace

void TDocumentLoader::CreateNewLyrics() {
  fParts.session->Active().Clear();
  fParts.session->Show({std::string()});
  fParts.document->StartNew(form_of_new_documents());
  fParts.session->DocumentStarted();
  fParts.offers->Withdraw();
  fParts.file->Follow();
}

void TDocumentLoader::Show(TOpenedLyrics opened) {
  if (opened.isEmptyFile) {
    CreateNewLyrics();
    fParts.document->BindToFile(opened.file, opened.state);
  } else {
    fParts.session->Show(opened.lines);
    const bool hasMixedTags = opened.hasMixedTags;
    fParts.document->Open(std::move(opened));
    fParts.session->DocumentStarted();
    fParts.offers->CheckTags(hasMixedTags);
    fParts.offers->CheckEncoding();
  }
  fParts.file->Follow();
  SendAddHistoryRqtd();
  fParts.recovery->DocumentOpened();
  SetWinTitle();
  fParts.session->ReportDefault();
  if (!fParts.document->Unread().IsTextWhole())
    notify(gLLT->Text("Err_Not_Whole") + ("\n" + fParts.document->File().FullPath()) + "\n\n" +
           gLLT->Text("Hint_Not_Whole"));
}

void TDocumentLoader::ShowWithoutFile(std::list<std::string> lines) {
  TOpenedLyrics opened;
  opened.form = form_of_new_documents();
  opened.lines = std::move(lines);
  prepare_for_editing(&opened.lines);
  fParts.session->Show(opened.lines);
  fParts.document->Open(std::move(opened));
  fParts.session->DocumentStarted();
  fParts.offers->Withdraw();
  fParts.file->Follow();
  SetWinTitle();
}

void TDocumentLoader::Recovered() {
  fParts.offers->Withdraw();
  fParts.file->Follow();
  if (!fParts.document->File().IsEmpty()) SendAddHistoryRqtd();
  SetWinTitle();
}

void TDocumentLoader::Renamed() const {
  SendAddHistoryRqtd();
  SetWinTitle();
}

void TDocumentLoader::SetWinTitle() const {
  const entry_ref& file = fParts.document->File();
  const std::string name = file.IsEmpty() ? gLLT->Text("New_Lyrics") : file.name;
  if (fOwner->Window()) fOwner->Window()->SetTitle((name + " - " + gAppName).c_str());
}

void TDocumentLoader::SendAddHistoryRqtd() const {
  BMessage request(kMsgAddHistory);
  request.AddRef("refs", &fParts.document->File());
  fOwner->Window()->PostMessage(&request);
}
