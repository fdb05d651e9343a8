#pragma once

#include "journal/journal_writer.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

/** Runs a TJournalWriter on a thread of its own, and its flushes on another one, so that neither the caller nor the
   next record waits for the disk. Owned by one thread, whose calls never block. */
class TJournalThread : public TJournalQueue {
public:
  /** `report` is called on the writer's thread. */
  TJournalThread(std::unique_ptr<TJournalDisk> disk, TJournalWriter::TReporter report);
  /** Executes and flushes what is queued, and joins the threads. */
  ~TJournalThread() override;

  /** A single large command is accepted. */
  [[nodiscard]] bool Push(TJournalCommand command) override;
  bool HasRoom() override;

private:
  void Write();
  void Flush();
  void WaitForWork(std::unique_lock<std::mutex>* lock);
  void HandOverDueFlush();

  const std::unique_ptr<TJournalDisk> fDisk;
  const TJournalWriter::TReporter fReport;
  TJournalWriter fWriter;                // used by fWriting only
  std::mutex fMutex;                     // guards fQueue, fQueuedBytes, fToFlush, fFlushFailed, fIsEnding, fIsWritten
  std::condition_variable fChanged;      // fWriting waits for it
  std::condition_variable fFlushChanged; // fFlushing waits for it
  std::deque<TJournalCommand> fQueue;
  size_t fQueuedBytes = 0;
  std::shared_ptr<TJournalFile> fToFlush;
  bool fFlushFailed = false;
  bool fIsEnding = false;
  bool fIsWritten = false; // fWriting has ended
  std::thread fWriting;    // fWriting and fFlushing: last, since they use all other members. Not started with the first
  std::thread fFlushing;   // change, which must not take longer than any other
};
