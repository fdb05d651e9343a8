#include "tools/vesmo_lrc/parallel.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr std::chrono::milliseconds kLook{50};

/** State of the runs; all fields are guarded by fMutex. */
class TRuns {
public:
  explicit TRuns(const TParallelWork& work)
      : fWork(work), fRuns((work.count + work.runLength - 1) / work.runLength), fDone(fRuns, false) {}

  /** The body of a worker thread. */
  void Work() {
    for (size_t run = 0; Take(&run);) {
      fWork.work(First(run), Last(run));
      const std::lock_guard lock(fMutex);
      fDone[run] = true;
      fChanged.notify_one();
    }
    const std::lock_guard lock(fMutex);
    ++fEnded;
    fChanged.notify_one();
  }

  size_t FinishInOrder() {
    size_t finished = 0;
    for (size_t run = 0; run < fRuns; ++run) {
      if (!WaitFor(run)) continue;
      fWork.finished(First(run), Last(run));
      finished += Last(run) - First(run);
    }
    return finished;
  }

private:
  size_t First(size_t run) const { return run * fWork.runLength; }
  size_t Last(size_t run) const { return std::min(First(run) + fWork.runLength, fWork.count); }

  bool Take(size_t* run) {
    if (fWork.isStopped()) return false;
    const std::lock_guard lock(fMutex);
    *run = fNext;
    return fNext < fRuns && ++fNext > 0;
  }

  /** False if it will not be processed any more. */
  bool WaitFor(size_t run) {
    std::unique_lock lock(fMutex);
    while (!fDone[run] && fEnded < fWork.threads) {
      fChanged.wait_for(lock, kLook);
      lock.unlock();
      fWork.waiting();
      lock.lock();
    }
    return fDone[run];
  }

  const TParallelWork& fWork;
  const size_t fRuns;
  std::mutex fMutex;
  std::condition_variable fChanged;
  std::vector<bool> fDone;
  size_t fNext = 0;
  unsigned fEnded = 0;
};

} // namespace

size_t run_in_parallel(const TParallelWork& work) {
  TRuns runs(work);
  std::vector<std::jthread> workers;
  for (unsigned i = 0; i < work.threads; ++i) workers.emplace_back([&runs] { runs.Work(); });
  return runs.FinishInOrder();
}
