#pragma once

#include "journal/journal_writer.h"
#include "lyrics/document.h"
#include "platform/kernel/threads.h"

#include <functional>
#include <memory>

struct TRecoveredDocument;

/** Records every step of a document, from its first change on, until it has no unsaved changes. Never waits for the
    disk: when the journal falls behind or fails, it later begins again with a snapshot of the whole document. On the
    document's thread. */
class TDocumentJournal : public TEditHistorySink {
public:
  /** `document` is not owned. Each report of the queue's writer has to be brought to `Handle`, on this thread. */
  TDocumentJournal(TDocument* document, std::unique_ptr<TJournalQueue> queue,
                   std::function<bigtime_t()> clock = system_time);
  /** Removes the journal of a document without unsaved changes, or whose loss the user has agreed to; else the next
      process finds it. */
  ~TDocumentJournal() override;

  /** The mode and the current line come back with the document. */
  void SetView(int32 mode, int32 line);
  /** The document will be closed although it has unsaved changes. Withdrawn by the next change. */
  void AllowLoss() { fLossIsAllowed = true; }
  void Handle(TJournalReport report);
  /** Called now and then: tries again to record what could not be recorded. */
  void CatchUp();
  /** The document was recovered from this journal, and goes on in it. */
  void Continue(std::shared_ptr<TJournalFile> file, const TRecoveredDocument& recovered);

  void HistoryReset() override;
  void StepRecorded(const TEditStep& step) override;
  void StepExtended(const TEditStep& step) override;
  void StepReplayed(TReplayDirection direction) override;
  void SavedStateChanged(bool isSaved) override;

private:
  enum class TState {
    kNone,    // no journal, and nothing recorded since the document was opened
    kResting, // no unsaved changes: no file, but the writer has the records so far
    kWriting,
    kBehind // records are missing: a snapshot is needed
  };

  void Note(TRecordType type, std::string payload);
  bool NoteForm();
  bool BeginWithFile();
  void BeginWithSnapshot();
  void Rest();
  bool Push(TJournalCommand command);
  TJournalTarget Target() const;
  std::vector<TJournalAppend> Snapshot() const;

  TDocument* const fDocument;
  TState fState = TState::kNone;
  TJournalView fView;
  TLyricsForm fForm; // fForm and fSourceNumber: of the document, as recorded
  int32 fSourceNumber = 0;
  bool fLossIsAllowed = false;
  bigtime_t fRetryAtUs = 0; // of a snapshot after a failure
  const std::function<bigtime_t()> fClock;
  const std::unique_ptr<TJournalQueue> fQueue;
};
