#include "document/recovery_search.h"

#include "platform/app/message.h"
#include "platform/support/log.h"
#include "plugin/message_codes.h"

#include <pthread.h>

#include <ctime>
#include <exception>
#include <utility>

TRecoverySearch::TRecoverySearch(const BMessenger& owner) : fOwner(owner) {}

TRecoverySearch::~TRecoverySearch() {
  {
    const std::lock_guard lock(fMutex);
    fWork.clear();
  }
  if (fThread.joinable()) fThread.join();
}

void TRecoverySearch::Start(const std::string& path) {
  Do([this, path] { Search(path); });
}

void TRecoverySearch::Do(std::function<void()> work) {
  {
    const std::lock_guard lock(fMutex);
    fWork.push_back(std::move(work));
    if (std::exchange(fIsRunning, true)) return;
  }
  if (fThread.joinable()) fThread.join(); // it has nothing left to do
  fThread = std::thread(&TRecoverySearch::Run, this);
}

void TRecoverySearch::Run() {
  pthread_setname_np(pthread_self(), "recovery");
  while (true) {
    std::function<void()> work;
    {
      const std::lock_guard lock(fMutex);
      fIsRunning = !fWork.empty();
      if (!fIsRunning) return;
      work = std::move(fWork.front());
      fWork.pop_front();
    }
    try {
      work();
    } catch (const std::exception& error) {
      log_error("recovery", error.what());
    }
  }
}

void TRecoverySearch::Search(const std::string& path) {
  TResult result{path, find_journals(fFolder, std::time(nullptr)), {}};
  if (!path.empty()) {
    std::erase_if(result.journals, [&path](const auto& one) { return !is_same_file(one.target.path, path); });
    result.otherProcess = process_editing(fFolder, path);
  }
  {
    const std::lock_guard lock(fMutex);
    fResults.push_back(std::move(result));
  }
  const BMessage found(kMsgJournalsFound);
  fOwner.SendMessage(&found, BMessenger(), 0);
}

std::vector<TRecoverySearch::TResult> TRecoverySearch::Take() {
  const std::lock_guard lock(fMutex);
  return std::exchange(fResults, {});
}
