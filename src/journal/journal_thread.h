#pragma once

#include "common/abandonable_thread.h"
#include "journal/journal_writer.h"

#include <chrono>
#include <memory>

/** Runs a TJournalWriter on a thread of its own, and its flushes on another one, so that neither the caller nor the
    next record waits for the disk. Owned by one thread, whose calls never block. */
class TJournalThread : public TJournalQueue {
public:
  /** How long the destructor waits for a disk that does not answer. What was written survives the process without the
      flush. */
  struct TTimeouts {
    std::chrono::milliseconds write{4000}; // a disk may have to spin up
    std::chrono::milliseconds flush{1000};
  };
  /** `report` is called on the writer's thread, and by one that was abandoned even after the destructor. */
  TJournalThread(std::unique_ptr<TJournalDisk> disk, TJournalWriter::TReporter report, TTimeouts timeouts);
  TJournalThread(std::unique_ptr<TJournalDisk> disk, TJournalWriter::TReporter report)
      : TJournalThread(std::move(disk), std::move(report), TTimeouts()) {}
  /** Executes and flushes what is queued, unless the disk does not answer within the timeouts. */
  ~TJournalThread() override;

  /** A single large command is accepted. */
  [[nodiscard]] bool Push(TJournalCommand command) override;
  bool HasRoom() override;

private:
  struct TShared;

  const std::shared_ptr<TShared> fShared; // also with abandoned threads
  // Started by the constructor, since the first change must not take longer than any other.
  TAbandonableThread fWriting;
  TAbandonableThread fFlushing;
};
