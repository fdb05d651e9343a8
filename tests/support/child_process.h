#pragma once

#include "tests/support/eventually.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

extern char** environ;

/** A program that a test runs; killed at the end. */
class ChildProcess {
public:
  ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() { Kill(); }

  /** `descriptors`: each of ours with the number it has there. */
  void Start(std::vector<std::string> words, const std::vector<std::pair<int, int>>& descriptors = {}) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const auto& [ours, there] : descriptors) posix_spawn_file_actions_adddup2(&actions, ours, there);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int error = posix_spawnp(&fProcess, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error(words[0] + " does not start");
  }
  pid_t Id() const { return fProcess; }
  /** SIGKILL, without a clean shutdown; returns when the process has ended. */
  void Kill() {
    if (fProcess == 0) return;
    kill(fProcess, SIGKILL);
    waitpid(std::exchange(fProcess, 0), nullptr, 0);
  }
  /** SIGTERM. The state from `waitpid`, -1 when it does not end. */
  int Terminate() {
    int state = -1;
    kill(fProcess, SIGTERM);
    if (eventually([&] { return waitpid(fProcess, &state, WNOHANG) == fProcess; })) fProcess = 0;
    return state;
  }
  /** SIGSTOP and SIGCONT; return when the process has stopped or continued. */
  void Stop() const {
    kill(fProcess, SIGSTOP);
    waitpid(fProcess, nullptr, WUNTRACED);
  }
  void Continue() const {
    kill(fProcess, SIGCONT);
    waitpid(fProcess, nullptr, WCONTINUED);
  }

private:
  pid_t fProcess = 0;
};
