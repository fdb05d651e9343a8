#pragma once

#include <chrono>
#include <cstddef>

/** A progress bar on standard error, shown only on a terminal and only if the work takes a while. Main thread. */
class TProgress {
public:
  TProgress(size_t total, bool isWanted);
  ~TProgress() { Clear(); }

  void Show(size_t done);
  /** Removes the bar; call before printing anything else. */
  void Clear();

private:
  using Clock = std::chrono::steady_clock;
  size_t fTotal;
  bool fIsWanted;
  bool fIsShown = false;
  Clock::time_point fNext;
};
