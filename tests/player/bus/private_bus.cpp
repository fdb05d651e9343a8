#include "tests/player/bus/private_bus.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string>

PrivateBus::PrivateBus() {
  std::array<int, 2> pipe{};
  if (pipe2(pipe.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipe[1], 1);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  std::array<char*, 5> words{const_cast<char*>("dbus-daemon"), const_cast<char*>("--session"),
                             const_cast<char*>("--nofork"), const_cast<char*>("--print-address"), nullptr};
  const int error = posix_spawnp(&fProcess, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(pipe[1]);
  std::string address;
  char letter = 0;
  while (error == 0 && read(pipe[0], &letter, 1) == 1 && letter != '\n') address += letter;
  close(pipe[0]);
  if (address.empty()) throw std::runtime_error("dbus-daemon did not start");
  setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
}

PrivateBus::~PrivateBus() {
  End();
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void PrivateBus::End() {
  if (fProcess < 0) return;
  kill(fProcess, SIGKILL);
  waitpid(fProcess, nullptr, 0);
  fProcess = -1;
}
