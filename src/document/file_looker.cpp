#include "document/file_looker.h"

#include "lyrics/lyrics_file.h"
#include "platform/app/message.h"
#include "platform/support/log.h"
#include "plugin/message_codes.h"

#include <exception>
#include <mutex>

struct TFileLooker::Job {
  const std::string path;
  const BMessenger asker; // invalid: nobody is notified
  std::mutex mutex;       // guards isDone and look
  bool isDone = false;
  TFileLook look{TFileKind::kNoAnswer, {}};

  Job(std::string thePath, const BMessenger& theAsker) : path(std::move(thePath)), asker(theAsker) {}
  bool IsDone() {
    const std::scoped_lock lock(mutex);
    return isDone;
  }
  void Run(const TRead& read, std::atomic<int64>* progress) {
    TFileLook found{TFileKind::kUnreadable, {}};
    try {
      found = read(path, kMaxLyricsFileSize, progress);
    } catch (const std::exception& error) {
      log_error("file comparison", error.what());
    }
    {
      const std::scoped_lock lock(mutex);
      look = found;
      isDone = true;
    }
    const BMessage looked(kMsgFileLooked);
    if (asker.IsValid()) asker.SendMessage(&looked, BMessenger(), 0);
  }
};

bool TFileLooker::Begin(const std::string& path, const BMessenger& asker) {
  if (fJob && !fJob->IsDone()) return false;
  const auto job = std::make_shared<Job>(path, asker);
  if (!fThread.Start("file comparison", [job, read = fRead](auto* progress) { job->Run(read, progress); }))
    return false;
  fJob = job;
  return true;
}

bool TFileLooker::Start(const std::string& path) {
  return Begin(path, fAsker);
}

TFileLook TFileLooker::Result(const std::string& path) const {
  if (!fJob || fJob->path != path) return {TFileKind::kNoAnswer, {}};
  const std::scoped_lock lock(fJob->mutex);
  return fJob->look;
}

/** A look that is under way may have read the file before its last change, so another one follows it. */
TFileLook TFileLooker::LookNow(const std::string& path) {
  if (!fThread.WaitForEnd()) return {TFileKind::kNoAnswer, {}};
  Begin(path, BMessenger());
  if (!fThread.WaitForEnd()) return {TFileKind::kNoAnswer, {}};
  return Result(path);
}
