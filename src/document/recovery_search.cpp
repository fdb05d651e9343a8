#include "document/recovery_search.h"

#include "platform/app/message.h"
#include "platform/support/log.h"
#include "plugin/message_codes.h"

#include <ctime>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

struct TRecoverySearch::TShared {
  const BMessenger owner;
  TJournalFolder folder;
  std::shared_ptr<TJournalFile> openFile; // of AnnounceOpen; used by the thread "recovery" only
  std::mutex mutex;                       // guards work, results, isRunning
  std::deque<std::function<void()>> work;
  std::vector<TResult> results;
  bool isRunning = false;

  explicit TShared(const BMessenger& theOwner) : owner(theOwner) {}
  void Run(TAbandonableThread::TProgress* progress);
  void Search(const std::string& path);
  void AnnounceOpen(const std::string& path);
};

void TRecoverySearch::TShared::Run(TAbandonableThread::TProgress* progress) {
  while (true) {
    std::function<void()> next;
    {
      const std::lock_guard lock(mutex);
      isRunning = !work.empty();
      if (!isRunning) return;
      next = std::move(work.front());
      work.pop_front();
    }
    try {
      next();
    } catch (const std::exception& error) {
      log_error("recovery", error.what());
    }
    ++*progress;
  }
}

void TRecoverySearch::TShared::Search(const std::string& path) {
  TResult result{path, {}, {}, {}};
  result.journals = find_journals(folder, std::time(nullptr), &result.unreadable);
  std::erase_if(result.unreadable, [](const auto& one) { return one->MarkedAtS(TJournalMark::kOffered).has_value(); });
  if (!path.empty()) {
    std::erase_if(result.journals, [&path](const auto& one) { return !is_same_file(one.target.path, path); });
    result.otherEditor = other_editor_of(folder, path);
  }
  {
    const std::lock_guard lock(mutex);
    results.push_back(std::move(result));
  }
  const BMessage found(kMsgJournalsFound);
  owner.SendMessage(&found, BMessenger(), 0);
}

void TRecoverySearch::TShared::AnnounceOpen(const std::string& path) {
  if (openFile) openFile->Remove();
  openFile = path.empty() ? nullptr : announce_open(&folder, path);
}

TRecoverySearch::TRecoverySearch(const BMessenger& owner, std::chrono::milliseconds timeout)
    : fShared(std::make_shared<TShared>(owner)), fThread(timeout) {}

TRecoverySearch::~TRecoverySearch() {
  {
    const std::lock_guard lock(fShared->mutex);
    fShared->work.clear();
  }
  AnnounceOpen({});
}

void TRecoverySearch::Start(const std::string& path) {
  Do([shared = fShared.get(), path] { shared->Search(path); }); // the queue is part of what it points to
}

void TRecoverySearch::AnnounceOpen(const std::string& path) {
  Do([shared = fShared.get(), path] { shared->AnnounceOpen(path); });
}

void TRecoverySearch::Do(std::function<void()> work) {
  {
    const std::lock_guard lock(fShared->mutex);
    fShared->work.push_back(std::move(work));
    if (std::exchange(fShared->isRunning, true)) return;
  }
  fThread.Start("recovery", [shared = fShared](auto* progress) { shared->Run(progress); });
}

std::vector<TRecoverySearch::TResult> TRecoverySearch::Take() {
  const std::lock_guard lock(fShared->mutex);
  return std::exchange(fShared->results, {});
}
