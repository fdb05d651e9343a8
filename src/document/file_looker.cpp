#include "document/file_looker.h"

#include "lyrics/lyrics_file.h"
#include "platform/app/message.h"
#include "platform/kernel/images.h"
#include "platform/support/log.h"
#include "plugin/message_codes.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

struct TFileLooker::Job {
  const std::string path;
  const BMessenger asker; // invalid: nobody is notified
  std::atomic<int64> progress{0};
  std::mutex mutex; // guards isDone and look
  std::condition_variable done;
  bool isDone = false;
  TFileLook look{TFileKind::kNoAnswer, {}};

  bool IsDone() {
    const std::scoped_lock lock(mutex);
    return isDone;
  }
  Job(std::string thePath, const BMessenger& theAsker) : path(std::move(thePath)), asker(theAsker) {}
};

TFileLooker::~TFileLooker() {
  if (!fThread.joinable()) return;
  if (WaitForEnd()) {
    fThread.join();
  } else {
    keep_image_mapped(reinterpret_cast<const void*>(&TFileLooker::Run)); // the abandoned thread returns into this code
    fThread.detach();
  }
}

void TFileLooker::Run(const std::shared_ptr<Job>& job, const TRead& read) {
  TFileLook look{TFileKind::kUnreadable, {}};
  try {
    look = read(job->path, kMaxLyricsFileSize, &job->progress);
  } catch (const std::exception& error) {
    log_error("file comparison", error.what());
  }
  const BMessage looked(kMsgFileLooked);
  const BMessenger asker = job->asker;
  {
    const std::scoped_lock lock(job->mutex);
    job->look = look;
    job->isDone = true;
    job->done.notify_all();
  }
  if (asker.IsValid()) asker.SendMessage(&looked, BMessenger(), 0);
}

bool TFileLooker::Begin(const std::string& path, const BMessenger& asker) {
  if (fJob && !fJob->IsDone()) return false;
  if (fThread.joinable()) fThread.join();
  fJob = std::make_shared<Job>(path, asker);
  fThread = std::thread(&TFileLooker::Run, fJob, fOptions.read);
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

bool TFileLooker::WaitForEnd() const {
  std::unique_lock lock(fJob->mutex);
  int64 before = 0;
  do {
    before = fJob->progress;
    if (fJob->done.wait_for(lock, fOptions.patience, [this] { return fJob->isDone; })) return true;
  } while (fJob->progress != before);
  return false;
}

/** A look that is under way may have read the file before its last change, so another one follows it. */
TFileLook TFileLooker::LookNow(const std::string& path) {
  if (fJob && !WaitForEnd()) return {TFileKind::kNoAnswer, {}};
  Begin(path, BMessenger());
  if (!WaitForEnd()) return {TFileKind::kNoAnswer, {}};
  return Result(path);
}
