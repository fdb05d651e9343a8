#pragma once

#include <chrono>
#include <cstddef>

/** A bar on the terminal's last line, on the standard error output; shows itself only when the work takes a while and
    there is a terminal to see it. Main thread. */
class TProgress {
public:
  TProgress(size_t total, bool isWanted);
  ~TProgress() { Clear(); }

  void Show(size_t done);
  /** Before anything else is printed. */
  void Clear();

private:
  using Clock = std::chrono::steady_clock;
  size_t fTotal;
  bool fIsWanted;
  bool fIsShown = false;
  Clock::time_point fNext;
};
