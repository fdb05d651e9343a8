/** The journal of the document, and the recovery of unsaved changes from the journals of earlier processes. */

#include "document/differences_win.h"
#include "document/edit_session.h"
#include "document/editor_view.h"
#include "document/file_watch.h"
#include "document/notice.h"
#include "document/recovery_offers.h"
#include "interapp/questions.h"
#include "journal/document_journal.h"
#include "journal/journal_thread.h"
#include "language/llt.h"
#include "lyrics/line_diff.h"
#include "platform/app/message.h"
#include "plugin/message_codes.h"

#include <utility>

namespace {

constexpr int32 kJournalNotice = kOtherNotices + 10;
/** More lines are not read by anyone. */
constexpr int kMostLinesShown = 5000;

std::optional<TRecoveredDocument> read(const TFoundJournal& offer) {
  const std::optional<std::string> bytes = read_journal(*offer.file);
  return bytes ? recover_document(*bytes) : std::nullopt;
}

/** The lines as they were last saved or, when no step leads there, as they were first. */
std::vector<std::string> saved_lines(TEditHistory history) {
  const size_t saved = history.SavedAfter().value_or(0);
  while (history.CountDone() > saved) history.ReplayNext(TReplayDirection::kUndo);
  while (history.CountDone() < saved) history.ReplayNext(TReplayDirection::kRedo);
  return history.Lines();
}

} // namespace

void TVesmoEView::StartJournal() {
  const BMessenger self(this);
  const auto report = [self](TJournalReport what) {
    BMessage message(kMsgJournalReport);
    message.AddInt32("Report", static_cast<int32>(what));
    self.SendMessage(&message, BMessenger(), 0);
  };
  fJournal = std::make_unique<TDocumentJournal>(
      &fDocument, std::make_unique<TJournalThread>(std::make_unique<TJournalFolder>(), report));
  fRecovery = std::make_unique<TRecoveryOffers>(self, fNotices);
  fRecovery->Search();
}

void TVesmoEView::JournalReported(const BMessage& message) {
  int32 number = 0;
  if (message.IsSourceRemote() || message.FindInt32("Report", &number) != B_OK) return;
  const auto report = static_cast<TJournalReport>(number);
  fJournal->Handle(report);
  if (report == TJournalReport::kFailed && !std::exchange(fJournalHasFailed, true))
    fNotices->ShowNotice({kJournalNotice, gLLT->Text("Notice_Journal_Failed"), {}, BMessenger(this), BMessage()});
  if (report != TJournalReport::kWorksAgain) return;
  fJournalHasFailed = false;
  fNotices->RemoveNotice(kJournalNotice);
}

bool TVesmoEView::RecoveryRqtd(const BMessage& message) {
  if (message.what == kMsgJournalsFound) {
    fRecovery->Found();
    return true;
  }
  const TFoundJournal* const offer = fRecovery->OfferOf(message);
  switch (message.what) {
  case kMsgViewChanges:
    if (offer) ViewChanges(*offer);
    return true;
  case kMsgRecover:
    if (offer && AskSave(message, this)) Recover(*offer);
    return true;
  case kMsgDiscardChanges:
    if (offer && ask_no_yes(gLLT->Text("Ask_Discard_Changes"))) fRecovery->Discard();
    return true;
  case kMsgRecoverLater:
    if (offer) fRecovery->Next();
    return true;
  default:
    return false;
  }
}

void TVesmoEView::ViewChanges(const TFoundJournal& offer) {
  const std::optional<TRecoveredDocument> found = read(offer);
  if (!found) return tell(gLLT->Text("Err_Cannot_Recover"));
  show_differences(&fDifferences, Window(), name_of_document(offer.target.path),
                   gLLT->Text("Differences_Legend_Recover"),
                   diff_text(saved_lines(found->history), found->history.Lines(), kMostLinesShown));
}

/** A file that has become another one meanwhile is not bound to the document, so that it cannot be overwritten. */
void TVesmoEView::Recover(const TFoundJournal& offer) {
  std::optional<TRecoveredDocument> found = read(offer);
  if (!found) return tell(gLLT->Text("Err_Cannot_Recover"));
  TOpenedLyrics opened;
  const bool isChanged = has_file_changed(found->target);
  opened.form = found->target.form;
  if (!isChanged && !found->target.path.empty()) {
    get_ref_for_path(found->target.path.c_str(), &opened.file);
    opened.losses = found->target.unread;
    opened.state = found->target.state;
  }
  fSession->Active().Clear();
  fDocument.Recover(opened, std::move(found->history));
  SetMode(found->view.mode);
  fSession->Show(fDocument.CopyLines());
  fSession->Active().SetCurLine(found->view.line);
  fSession->DocumentStarted();
  fJournal->Continue(offer.file, *found);
  fFileWatch->Follow();
  fRecovery->Next();
  if (!fDocument.File().IsEmpty()) SendAddHistoryRqtd();
  SetWinTitle();
  SetStatBarStr(gLLT->Text(isChanged ? "StatBarStr_Recovered_As_New" : "StatBarStr_Recovered"));
}
