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
  setenv("DBUS_SESSION_BUS_ADDRESS", fAddress.c_str(), 1);
  Start();
}

/** Returns when the bus can be reached. */
void PrivateBus::Start() {
  std::array<int, 2> pipe{};
  if (pipe2(pipe.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipe[1], 1);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  std::string address = "--address=" + fAddress;
  std::array<char*, 6> words{const_cast<char*>("dbus-daemon"),
                             const_cast<char*>("--session"),
                             const_cast<char*>("--nofork"),
                             const_cast<char*>("--print-address"),
                             address.data(),
                             nullptr};
  const int error = posix_spawnp(&fProcess, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(pipe[1]);
  char letter = 0;
  while (error == 0 && letter != '\n' && read(pipe[0], &letter, 1) == 1) continue;
  close(pipe[0]);
  if (letter != '\n') throw std::runtime_error("dbus-daemon did not start");
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
