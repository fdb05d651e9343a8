#pragma once

#include "tests/support/eventually.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <thread>

/** Whether the kernel has this thread of the process asleep. */
inline bool is_asleep(pid_t thread) {
  std::string line;
  std::getline(std::ifstream("/proc/self/task/" + std::to_string(thread) + "/stat"), line);
  const size_t name = line.rfind(')');
  return name != line.npos && line.substr(name, 3) == ") S";
}

/** The thread with this name as the kernel knows it; 0 when there is none. */
inline pid_t thread_named(const std::string& name) {
  for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
    std::string found;
    if (std::getline(std::ifstream(task.path() / "comm"), found); found == name)
      return std::stoi(task.path().filename().string());
  }
  return 0;
}

/** A thread that is meant to block in `call` until the test wakes it. One that is not woken is left behind: the test
   has failed by then. */
struct Waiter {
  explicit Waiter(std::function<void()> call)
      : fThread([state = fState, call = std::move(call)] {
          state->thread = gettid();
          call();
          state->hasReturned = true;
        }) {}
  Waiter(const Waiter&) = delete;
  Waiter& operator=(const Waiter&) = delete;
  ~Waiter() {
    if (fState->hasReturned)
      fThread.join();
    else
      fThread.detach();
  }

  /** Waits until it sleeps; false when it returned without. */
  bool Sleeps() const {
    return eventually([this] { return fState->hasReturned || is_asleep(fState->thread); }) && !fState->hasReturned;
  }
  /** Waits until the call has returned. */
  bool IsWoken() const {
    return eventually([this] { return fState->hasReturned.load(); });
  }

private:
  struct State {
    std::atomic<pid_t> thread{0};
    std::atomic<bool> hasReturned{false};
  };
  const std::shared_ptr<State> fState = std::make_shared<State>();
  std::thread fThread;
};

/** `call` sleeps, and is woken by `wake`. */
inline void expect_woken(const std::function<void()>& call, const std::function<void()>& wake) {
  const Waiter waiter(call);
  EXPECT_TRUE(waiter.Sleeps());
  wake();
  EXPECT_TRUE(waiter.IsWoken());
}
