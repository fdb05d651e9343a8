#pragma once

#include "common/abandonable_thread.h"
#include "lyrics/file_state.h"
#include "platform/app/messenger.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

/** Reads files for comparison on a thread of its own, one at a time, so that a disk or server that does not answer
    blocks nobody. Owned by the document's view, on its window's thread. */
class TFileLooker {
public:
  using TRead = std::function<TFileLook(const std::string& path, int64 maxSize, std::atomic<int64>* progress)>;
  /** How to read, and how long to wait without progress. */
  struct TOptions {
    TRead read = look_at_file;
    std::chrono::milliseconds patience{4000}; // a disk may have to spin up
  };
  /** `asker` gets kMsgFileLooked after each look that was started by Start. */
  TFileLooker(const BMessenger& asker, TOptions options)
      : fAsker(asker), fRead(std::move(options.read)), fThread(options.patience) {}

  /** False while the previous look is not finished. */
  bool Start(const std::string& path);
  /** The result of the last look, if it was at that file; kNoAnswer while it is not finished. */
  [[nodiscard]] TFileLook Result(const std::string& path) const;
  /** Looks at once, and waits as long as the disk goes on delivering; kNoAnswer when it does not. */
  [[nodiscard]] TFileLook LookNow(const std::string& path);

private:
  struct Job;
  bool Begin(const std::string& path, const BMessenger& asker);

  const BMessenger fAsker;
  const TRead fRead;
  std::shared_ptr<Job> fJob; // the last one; null before the first
  TAbandonableThread fThread;
};
