#include "journal/journal_thread.h"

#include "platform/kernel/threads.h"
#include "platform/support/log.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
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

/** Used by both threads, and by the owner. */
struct TJournalThread::TShared {
  TShared(std::unique_ptr<TJournalDisk> theDisk, TJournalWriter::TReporter report)
      : disk(std::move(theDisk)), writer(disk.get(), std::move(report)) {}

  void Write(TAbandonableThread::TProgress* progress);
  void Flush(TAbandonableThread::TProgress* progress);
  void WaitForWork(std::unique_lock<std::mutex>* lock);
  void Execute(TJournalCommand command);
  void HandOverDueFlush();

  const std::unique_ptr<TJournalDisk> disk;
  TJournalWriter writer;                // used by the thread "journal" only
  std::mutex mutex;                     // guards queue, queuedBytes, toFlush, flushFailed, isEnding, isWritten
  std::condition_variable changed;      // the thread "journal" waits for it
  std::condition_variable flushChanged; // the thread "journal flush" waits for it
  std::deque<TJournalCommand> queue;
  size_t queuedBytes = 0;
  std::shared_ptr<TJournalFile> toFlush;
  bool flushFailed = false;
  bool isEnding = false;
  bool isWritten = false; // nothing more will be flushed
};

TJournalThread::TJournalThread(std::unique_ptr<TJournalDisk> disk, TJournalWriter::TReporter report, TTimeouts timeouts)
    : fShared(std::make_shared<TShared>(std::move(disk), std::move(report))), fWriting(timeouts.write),
      fFlushing(timeouts.flush) {
  fWriting.Start("journal", [shared = fShared](auto* progress) { shared->Write(progress); });
  fFlushing.Start("journal flush", [shared = fShared](auto* progress) { shared->Flush(progress); });
}

TJournalThread::~TJournalThread() {
  {
    const std::lock_guard lock(fShared->mutex);
    fShared->isEnding = true;
    fShared->changed.notify_one();
  }
  if (fWriting.WaitForEnd()) return;
  const std::lock_guard lock(fShared->mutex);
  fShared->isWritten = true;
  fShared->flushChanged.notify_one();
}

bool TJournalThread::Push(TJournalCommand command) {
  const size_t size = bytes_of(command);
  {
    const std::lock_guard lock(fShared->mutex);
    if (fShared->queuedBytes + size > kMostQueuedBytes && !fShared->queue.empty() && !is_removal(command)) return false;
    fShared->queue.push_back(std::move(command));
    fShared->queuedBytes += size;
  }
  fShared->changed.notify_one(); // without the lock, so that the woken thread does not wait for it
  return true;
}

bool TJournalThread::HasRoom() {
  const std::lock_guard lock(fShared->mutex);
  return fShared->queuedBytes < kFewQueuedBytes;
}

/** Returns when there is something to do, and sometimes before. */
void TJournalThread::TShared::WaitForWork(std::unique_lock<std::mutex>* lock) {
  if (!queue.empty() || flushFailed) return;
  const std::optional<bigtime_t> due = writer.FlushDueUs();
  const bool isFlushFree = due && !toFlush;
  if (isFlushFree && (isEnding || *due <= system_time())) return;
  if (isEnding && !due) return;
  if (isFlushFree)
    changed.wait_for(*lock, std::chrono::microseconds(*due - system_time()));
  else
    changed.wait(*lock);
}

void TJournalThread::TShared::HandOverDueFlush() {
  if (toFlush) return;
  const bigtime_t now = isEnding ? B_INFINITE_TIMEOUT : system_time();
  toFlush = writer.TakeDueFlush(now);
  if (toFlush) flushChanged.notify_one();
}

void TJournalThread::TShared::Execute(TJournalCommand command) {
  try {
    writer.Execute(std::move(command), system_time());
  } catch (const std::exception& error) {
    log_error("journal", error.what());
    writer.FlushFailed();
  }
}

void TJournalThread::TShared::Write(TAbandonableThread::TProgress* progress) {
  std::unique_lock lock(mutex);
  while (true) {
    WaitForWork(&lock);
    while (!queue.empty()) {
      TJournalCommand command = std::move(queue.front());
      queue.pop_front();
      queuedBytes -= bytes_of(command);
      lock.unlock();
      Execute(std::move(command));
      ++*progress;
      lock.lock();
      HandOverDueFlush();
    }
    if (std::exchange(flushFailed, false)) {
      lock.unlock();
      writer.FlushFailed();
      lock.lock();
    }
    HandOverDueFlush();
    if (isEnding && queue.empty() && !writer.FlushDueUs()) break;
  }
  isWritten = true;
  flushChanged.notify_one();
}

void TJournalThread::TShared::Flush(TAbandonableThread::TProgress* progress) {
  std::unique_lock lock(mutex);
  while (true) {
    flushChanged.wait(lock, [this] { return toFlush || isWritten; });
    if (!toFlush) return;
    const std::shared_ptr<TJournalFile> file = toFlush;
    lock.unlock();
    const bool isFlushed = file->Flush();
    ++*progress;
    lock.lock();
    flushFailed |= !isFlushed;
    toFlush.reset();
    changed.notify_one();
  }
}
