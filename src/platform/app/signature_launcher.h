#pragma once

#include "platform/support/types.h"

#include <chrono>
#include <future>
#include <map>
#include <mutex>
#include <string>

/** Starts installed programs by signature. Clients repeat their request while a program does not answer, so this
    debounces: for some seconds after an attempt, and as long as the program that it started is running, there is no
   other for the same signature. Thread-safe. */
class SignatureLauncher {
public:
  using Clock = std::chrono::steady_clock;

  /** B_OK when the program was started, B_ALREADY_RUNNING while it was so recently or still runs; B_LAUNCH_FAILED when
      none is installed, or it cannot be started. */
  status_t Launch(const std::string& signature, Clock::time_point now = Clock::now());

private:
  struct Attempt {
    Clock::time_point time;
    status_t repeated; // the result of repeated requests
    std::future<bool> exited;
  };

  std::mutex fMutex; // guards fAttempts; not held while a program is looked up and started
  std::map<std::string, Attempt> fAttempts;
};
