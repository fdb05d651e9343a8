#include "platform/app/start_program.h"

#include <spawn.h>
#include <sys/wait.h>

#include <thread>
#include <utility>

extern char** environ;

std::optional<std::future<bool>> start_program(const std::vector<std::string>& arguments) {
  std::vector<std::string> copies = arguments;
  std::vector<char*> pointers;
  for (std::string& argument : copies) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  pid_t child = 0;
  if (posix_spawnp(&child, pointers[0], nullptr, nullptr, pointers.data(), environ) != 0) return std::nullopt;
  std::promise<bool> promise;
  std::future<bool> exited = promise.get_future();
  std::thread([child, end = std::move(promise)]() mutable {
    int state = 0;
    end.set_value(waitpid(child, &state, 0) == child && WIFEXITED(state) && WEXITSTATUS(state) == 0);
  }).detach();
  return exited;
}
