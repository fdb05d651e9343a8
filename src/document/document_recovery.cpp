#include "document/document_recovery.h"

#include "document/differences_win.h"
#include "document/edit_session.h"
#include "document/notice.h"
#include "interapp/questions.h"
#include "journal/document_journal.h"
#include "journal/journal_thread.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "plugin/message_codes.h"

#include <utility>

namespace {

constexpr int32 kJournalNotice = kOtherNotices + 10;

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

/** Reports of the writer, which has a thread of its own, come as messages. */
TJournalWriter::TReporter report_to(const BMessenger& owner) {
  return [owner](TJournalReport what) {
    BMessage message(kMsgJournalReport);
    message.AddInt32("Report", static_cast<int32>(what));
    owner.SendMessage(&message, BMessenger(), 0);
  };
}

/** A file that has become another one meanwhile is not bound to the document, so that it cannot be overwritten. */
TOpenedLyrics opened_for(const TJournalTarget& target, bool isFileChanged) {
  TOpenedLyrics opened;
  opened.form = target.form;
  if (isFileChanged || target.path.empty()) return opened;
  get_ref_for_path(target.path.c_str(), &opened.file);
  opened.losses = target.unread;
  opened.state = target.state;
  return opened;
}

} // namespace

TDocumentRecovery::TDocumentRecovery(const BHandler* owner, TDocument* document, TEditSession* session,
                                     TNoticeBoard* notices, TDifferences* differences)
    : fDocument(document), fSession(session), fNotices(notices), fDifferences(differences), fOwner(owner),
      fJournal(std::make_unique<TDocumentJournal>(
          document, std::make_unique<TJournalThread>(std::make_unique<TJournalFolder>(), report_to(fOwner)))),
      fOffers(fOwner, notices) {
  fOffers.Search();
}

TDocumentRecovery::~TDocumentRecovery() = default;

bool TDocumentRecovery::Handle(const BMessage& message) {
  const TFoundJournal* const offer = fOffers.OfferOf(message);
  switch (message.what) {
  case kMsgJournalReport:
    JournalReported(message);
    return true;
  case kMsgJournalsFound:
    fOffers.Found();
    return true;
  case kMsgViewChanges:
    if (offer) ViewChanges(*offer);
    return true;
  case kMsgDiscardChanges:
    if (offer && ask_no_yes(gLLT->Text("Ask_Discard_Changes"))) fOffers.Discard();
    return true;
  case kMsgRecoverLater:
    if (offer) fOffers.Next();
    return true;
  default:
    return false;
  }
}

/** Announced before the search, so that of two editors that open a file at the same time both learn of it. */
void TDocumentRecovery::DocumentOpened() {
  AnnounceFile();
  fOffers.Search(fDocument->File().FullPath());
}

void TDocumentRecovery::AnnounceFile() {
  const std::string path = fDocument->File().FullPath();
  if (path == fAnnounced) return;
  fAnnounced = path;
  fOffers.AnnounceOpen(path);
}

void TDocumentRecovery::JournalReported(const BMessage& message) {
  int32 number = 0;
  if (message.IsSourceRemote() || message.FindInt32("Report", &number) != B_OK) return;
  const auto report = static_cast<TJournalReport>(number);
  fJournal->Handle(report);
  if (report == TJournalReport::kFailed && !std::exchange(fHasFailed, true))
    fNotices->ShowNotice({kJournalNotice, gLLT->Text("Notice_Journal_Failed"), {}, fOwner, BMessage()});
  if (report != TJournalReport::kWorksAgain) return;
  fHasFailed = false;
  fNotices->RemoveNotice(kJournalNotice);
}

void TDocumentRecovery::ViewChanges(const TFoundJournal& offer) {
  const std::optional<TRecoveredDocument> found = read(offer);
  if (!found) return tell(gLLT->Text("Err_Cannot_Recover"));
  fDifferences->Show(name_of_document(offer.target.path), "Differences_Legend_Recover", saved_lines(found->history),
                     found->history.Lines());
}

std::optional<std::string> TDocumentRecovery::Recover(const BMessage& message) {
  const TFoundJournal* const offer = fOffers.OfferOf(message);
  std::optional<TRecoveredDocument> found = offer ? read(*offer) : std::nullopt;
  if (!found) {
    tell(gLLT->Text("Err_Cannot_Recover"));
    return {};
  }
  const bool isFileChanged = has_file_changed(found->target);
  fSession->Active().Clear();
  TOpenedLyrics opened = opened_for(found->target, isFileChanged);
  opened.source = std::move(found->source);
  fDocument->Recover(opened, std::move(found->history));
  fSession->SetMode(edit_mode_of(found->view.mode).value_or(fSession->Mode()));
  fSession->Show(fDocument->CopyLines());
  fSession->Active().SetCurLine(found->view.line);
  fSession->DocumentStarted();
  fJournal->Continue(offer->file, *found);
  fOffers.Next();
  return gLLT->Text(isFileChanged ? "StatBarStr_Recovered_As_New" : "StatBarStr_Recovered");
}

void TDocumentRecovery::ViewChanged() {
  fJournal->SetView(static_cast<int32>(fSession->Mode()), fSession->Active().CurLine());
}

void TDocumentRecovery::Poll() {
  // In free edit the line is known to the display only, and comes with the next step.
  if (fSession->Mode() != TEditMode::kFreeEdit) ViewChanged();
  fJournal->CatchUp();
  AnnounceFile();
}

void TDocumentRecovery::AllowLoss() {
  fJournal->AllowLoss();
}
