#pragma once

#include "journal/journal_search.h"
#include "platform/app/messenger.h"

#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/** Looks for journals on a thread of its own, so that the window never waits for the disk. Sends kMsgJournalsFound
    after each search. Owned by the editor view, on its thread. */
class TRecoverySearch {
public:
  explicit TRecoverySearch(const BMessenger& owner);
  TRecoverySearch(const TRecoverySearch&) = delete;
  TRecoverySearch& operator=(const TRecoverySearch&) = delete;
  /** Waits for what is running, and drops the rest. */
  ~TRecoverySearch();

  struct TResult {
    std::string path; // of the document that was opened, if any
    std::vector<TFoundJournal> journals;
    std::optional<int32> otherProcess; // has unsaved changes in that file
  };
  /** For all journals, or only for those of the file at `path`. */
  void Start(const std::string& path);
  /** Runs it after the searches. */
  void Do(std::function<void()> work);
  /** What was found since the last call. */
  std::vector<TResult> Take();

private:
  void Search(const std::string& path);
  void Run();

  const BMessenger fOwner;
  const TJournalFolder fFolder;
  std::mutex fMutex; // guards fWork, fResults, fIsRunning
  std::deque<std::function<void()>> fWork;
  std::vector<TResult> fResults;
  bool fIsRunning = false;
  std::thread fThread;
};
