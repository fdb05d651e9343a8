#pragma once

#include "common/abandonable_thread.h"
#include "journal/journal_search.h"
#include "platform/app/messenger.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/** Looks for journals on a thread of its own, so that the window never waits for the disk. Sends kMsgJournalsFound
    after each search. Owned by the editor view, on its thread. */
class TRecoverySearch {
public:
  /** `timeout`: how long the destructor waits for a disk that does not answer. A search may be ended at any point, as
      by a crash, so not long. */
  explicit TRecoverySearch(const BMessenger& owner, std::chrono::milliseconds timeout = std::chrono::seconds(1));
  TRecoverySearch(const TRecoverySearch&) = delete;
  TRecoverySearch& operator=(const TRecoverySearch&) = delete;
  /** Waits for what is running, with the timeout, and drops the rest. The file is no longer shown as open. */
  ~TRecoverySearch();

  struct TResult {
    std::string path; // of the document that was opened, if any
    std::vector<TFoundJournal> journals;
    TJournalFiles unreadable;                // that the user has not been told of
    std::optional<TOtherEditor> otherEditor; // has that file open
  };
  /** For all journals, or only for those of the file at `path`. */
  void Start(const std::string& path);
  /** Shows other processes that this file is open, instead of the previous one; an empty path for none. */
  void AnnounceOpen(const std::string& path);
  /** Runs it after the searches. It must own everything it uses. */
  void Do(std::function<void()> work);
  /** What was found since the last call. */
  std::vector<TResult> Take();

private:
  struct TShared;

  const std::shared_ptr<TShared> fShared; // also with an abandoned thread
  TAbandonableThread fThread;
};
