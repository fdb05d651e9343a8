#include "journal/journal_thread.h"

#include "platform/kernel/threads.h"
#include "platform/support/log.h"

#include <pthread.h>

#include <chrono>
#include <exception>
#include <utility>

namespace {

constexpr size_t kMostQueuedBytes = 1 << 20;
constexpr size_t kFewQueuedBytes = 64 << 10;
constexpr size_t kCommandBytes = 256; // of memory, besides its payload

size_t bytes_of(const TJournalCommand& command) {
  if (const auto* const record = std::get_if<TJournalAppend>(&command)) return kCommandBytes + record->payload.size();
  const auto* const start = std::get_if<TJournalStart>(&command);
  size_t size = kCommandBytes;
  if (start == nullptr) return size;
  if (const auto* const records = std::get_if<std::vector<TJournalAppend>>(&start->base))
    for (const TJournalAppend& record : *records) size += kCommandBytes + record.payload.size();
  return size;
}

/** A command that frees the disk is never refused. */
bool is_removal(const TJournalCommand& command) {
  return std::holds_alternative<TJournalRest>(command) || std::holds_alternative<TJournalClose>(command);
}

} // namespace

TJournalThread::TJournalThread(std::unique_ptr<TJournalDisk> disk, TJournalWriter::TReporter report)
    : fDisk(std::move(disk)), fReport(std::move(report)), fWriter(fDisk.get(), fReport),
      fWriting(&TJournalThread::Write, this), fFlushing(&TJournalThread::Flush, this) {}

TJournalThread::~TJournalThread() {
  {
    const std::lock_guard lock(fMutex);
    fIsEnding = true;
    fChanged.notify_one();
  }
  fWriting.join();
  fFlushing.join();
}

bool TJournalThread::Push(TJournalCommand command) {
  const size_t size = bytes_of(command);
  {
    const std::lock_guard lock(fMutex);
    if (fQueuedBytes + size > kMostQueuedBytes && !fQueue.empty() && !is_removal(command)) return false;
    fQueue.push_back(std::move(command));
    fQueuedBytes += size;
  }
  fChanged.notify_one(); // without the lock, so that the woken thread does not wait for it
  return true;
}

bool TJournalThread::HasRoom() {
  const std::lock_guard lock(fMutex);
  return fQueuedBytes < kFewQueuedBytes;
}

/** Returns when there is something to do, and sometimes before. */
void TJournalThread::WaitForWork(std::unique_lock<std::mutex>* lock) {
  if (!fQueue.empty() || fFlushFailed) return;
  const std::optional<bigtime_t> due = fWriter.FlushDueUs();
  const bool isFlushFree = due && !fToFlush;
  if (isFlushFree && (fIsEnding || *due <= system_time())) return;
  if (fIsEnding && !due) return;
  if (isFlushFree)
    fChanged.wait_for(*lock, std::chrono::microseconds(*due - system_time()));
  else
    fChanged.wait(*lock);
}

void TJournalThread::HandOverDueFlush() {
  if (fToFlush) return;
  const bigtime_t now = fIsEnding ? B_INFINITE_TIMEOUT : system_time();
  fToFlush = fWriter.TakeDueFlush(now);
  if (fToFlush) fFlushChanged.notify_one();
}

void TJournalThread::Write() {
  pthread_setname_np(pthread_self(), "journal");
  std::unique_lock lock(fMutex);
  while (true) {
    WaitForWork(&lock);
    while (!fQueue.empty()) {
      TJournalCommand command = std::move(fQueue.front());
      fQueue.pop_front();
      fQueuedBytes -= bytes_of(command);
      lock.unlock();
      try {
        fWriter.Execute(std::move(command), system_time());
      } catch (const std::exception& error) {
        log_error("journal", error.what());
        fWriter.FlushFailed();
      }
      lock.lock();
      HandOverDueFlush();
    }
    if (std::exchange(fFlushFailed, false)) {
      lock.unlock();
      fWriter.FlushFailed();
      lock.lock();
    }
    HandOverDueFlush();
    if (fIsEnding && fQueue.empty() && !fWriter.FlushDueUs()) break;
  }
  fIsWritten = true;
  fFlushChanged.notify_one();
}

void TJournalThread::Flush() {
  pthread_setname_np(pthread_self(), "journal flush");
  std::unique_lock lock(fMutex);
  while (true) {
    fFlushChanged.wait(lock, [this] { return fToFlush || fIsWritten; });
    if (!fToFlush) return;
    const std::shared_ptr<TJournalFile> file = fToFlush;
    lock.unlock();
    const bool isFlushed = file->Flush();
    lock.lock();
    fFlushFailed |= !isFlushed;
    fToFlush.reset();
    fChanged.notify_one();
  }
}
