#pragma once

#include <chrono>
#include <mutex>
#include <string_view>

/** Writes one line, "sonivo: where: what", to standard error, atomically. Thread-safe. Does not allocate, so that
   running out of memory can be logged, too. */
void log_error(std::string_view where, std::string_view what) noexcept;

/** Rate-limited log for errors that other programs can cause at will: one line in ten seconds, with the number of
    suppressed ones. Thread-safe. */
class LimitedLog {
public:
  void Error(std::string_view where, std::string_view what);

private:
  static constexpr std::chrono::seconds kQuiet{10};
  std::mutex fMutex; // guards fQuietUntil, fLeftOut
  std::chrono::steady_clock::time_point fQuietUntil;
  int fLeftOut = 0;
};
