#include "journal/document_journal.h"

#include "journal/journal_reader.h"

#include <ctime>
#include <utility>

namespace {

/** Pause between attempts on a disk that fails: each takes a copy of the whole document. */
constexpr bigtime_t kRetryUs = 5000000;

TJournalAppend record(TRecordType type, std::string payload = {}) {
  return {type, std::time(nullptr), std::move(payload)};
}

} // namespace

TDocumentJournal::TDocumentJournal(TDocument* document, std::unique_ptr<TJournalQueue> queue,
                                   std::function<bigtime_t()> clock)
    : fDocument(document), fClock(std::move(clock)), fQueue(std::move(queue)) {
  fDocument->SetHistorySink(this);
}

TDocumentJournal::~TDocumentJournal() {
  fDocument->SetHistorySink(nullptr);
  if (fLossIsAllowed || !fDocument->IsModified()) HistoryReset();
}

bool TDocumentJournal::Push(TJournalCommand command) {
  if (fQueue->Push(std::move(command))) return true;
  fState = TState::kBehind;
  return false;
}

void TDocumentJournal::SetView(int32 mode, int32 line) {
  if (fView.mode == mode && fView.line == line) return;
  fView = {mode, line};
  if (fState == TState::kWriting) Push(record(TRecordType::kView, encoded_view(fView)));
}

void TDocumentJournal::CatchUp() {
  if (fState == TState::kBehind && fDocument->IsModified() && fClock() >= fRetryAtUs) BeginWithSnapshot();
}

void TDocumentJournal::HistoryReset() {
  if (fState != TState::kNone) Push(TJournalClose());
  fState = TState::kNone;
  fLossIsAllowed = false;
  fRetryAtUs = 0;
  fSourceNumber = fDocument->SourceNumber(); // that of the base
}

void TDocumentJournal::StepRecorded(const TEditStep& step) {
  Note(TRecordType::kStep, encoded_step(step));
}

void TDocumentJournal::StepExtended(const TEditStep& step) {
  Note(TRecordType::kTyping, step.after.substr(0, step.after.size() - 1)); // without its line feed
}

void TDocumentJournal::StepReplayed(TReplayDirection direction) {
  Note(direction == TReplayDirection::kUndo ? TRecordType::kUndo : TRecordType::kRedo, {});
}

void TDocumentJournal::SavedStateChanged(bool isSaved) {
  Note(isSaved ? TRecordType::kSaved : TRecordType::kUnsaved, {});
}

/** The change has been made already. */
void TDocumentJournal::Note(TRecordType type, std::string payload) {
  fLossIsAllowed = false;
  const bool isModified = fDocument->IsModified();
  if (fState == TState::kNone && type != TRecordType::kSaved) BeginWithFile(); // a save has replaced the file
  if (fState == TState::kNone || fState == TState::kBehind) {
    if (fClock() >= fRetryAtUs) BeginWithSnapshot(); // includes the change
  } else {
    const bool isGoingOn = fState == TState::kWriting || !isModified ||
                           Push(TJournalStart{Target(), fView.mode, TJournalStart::TSameDocument()});
    if (isGoingOn && Push(record(type, std::move(payload))) && NoteForm())
      fState = isModified ? TState::kWriting : fState;
  }
  if (!isModified) Rest();
}

/** A step may have changed the dialect, or be a file that was read again. */
bool TDocumentJournal::NoteForm() {
  if (fForm != fDocument->Form() && !Push(record(TRecordType::kTarget, encoded_target(Target())))) return false;
  fForm = fDocument->Form();
  if (fSourceNumber == fDocument->SourceNumber()) return true;
  fSourceNumber = fDocument->SourceNumber();
  return Push(record(TRecordType::kSource, encoded_source(fDocument->Source())));
}

/** The writer copies the file that was opened, so that no line is copied here. False if the lines came from elsewhere.
 */
bool TDocumentJournal::BeginWithFile() {
  if (!fDocument->Start() || !Push(TJournalStart{Target(), fView.mode, *fDocument->Start()})) return false;
  fForm = fDocument->Form();
  fState = TState::kWriting;
  return true;
}

/** Takes a copy of the whole document, so not when it would be refused. */
void TDocumentJournal::BeginWithSnapshot() {
  if (!fQueue->HasRoom())
    fState = TState::kBehind;
  else if (Push(TJournalStart{Target(), fView.mode, Snapshot()})) {
    fState = TState::kWriting;
    fForm = fDocument->Form();
    fSourceNumber = fDocument->SourceNumber();
  }
}

void TDocumentJournal::Rest() {
  if (fState == TState::kNone) return;
  Push(TJournalRest());
  if (fState == TState::kWriting) fState = TState::kResting;
}

void TDocumentJournal::Handle(TJournalReport report) {
  if (report == TJournalReport::kWorksAgain || fState == TState::kNone) return;
  fState = TState::kBehind;
  if (report == TJournalReport::kFailed) {
    fRetryAtUs = fClock() + kRetryUs;
  } else if (fDocument->IsModified()) {
    BeginWithSnapshot();
  }
}

void TDocumentJournal::Continue(std::shared_ptr<TJournalFile> file, const TRecoveredDocument& recovered) {
  fView = recovered.view;
  fState = TState::kWriting;
  const bool isPushed = Push(TJournalAdopt{std::move(file), recovered.header, recovered.bodyStart, recovered.validSize,
                                           recovered.nextNumber}) &&
                        Push(TJournalStart{Target(), fView.mode, TJournalStart::TSameDocument()}) &&
                        Push(record(TRecordType::kView, encoded_view(fView)));
  if (isPushed && !fDocument->History().SavedAfter()) Push(record(TRecordType::kUnsaved));
}

TJournalTarget TDocumentJournal::Target() const {
  return {fDocument->File().FullPath(), fDocument->Form(), fDocument->Unread(), fDocument->StateOnDisk()};
}

std::vector<TJournalAppend> TDocumentJournal::Snapshot() const {
  const TEditHistory& history = fDocument->History();
  std::vector<TJournalAppend> records{record(TRecordType::kLines, encoded_lines_payload(history.Lines()))};
  for (const TEditStep& step : history.Steps()) records.push_back(record(TRecordType::kPastStep, encoded_step(step)));
  const std::optional<size_t> saved = history.SavedAfter();
  records.push_back(record(TRecordType::kHistory, encoded_history({history.CountDone(), saved})));
  records.push_back(record(TRecordType::kView, encoded_view(fView)));
  if (!fDocument->Source().IsEmpty())
    records.push_back(record(TRecordType::kSource, encoded_source(fDocument->Source())));
  return records;
}
