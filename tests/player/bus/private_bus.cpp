#include "tests/player/bus/private_bus.h"

#include "platform/kernel/unique_fd.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

PrivateBus::PrivateBus() {
  setenv("DBUS_SESSION_BUS_ADDRESS", fAddress.c_str(), 1);
  Start();
}

/** Returns when the bus can be reached. */
void PrivateBus::Start() {
  int pipe[2];
  if (pipe2(pipe, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  const UniqueFd nothing(open("/dev/null", O_WRONLY | O_CLOEXEC)), printed(pipe[0]);
  fProcess.Start({"dbus-daemon", "--session", "--nofork", "--print-address", "--address=" + fAddress},
                 {{pipe[1], STDOUT_FILENO}, {nothing.Get(), STDERR_FILENO}});
  close(pipe[1]);
  char letter = 0;
  while (letter != '\n' && read(printed.Get(), &letter, 1) == 1) continue;
  if (letter != '\n') throw std::runtime_error("dbus-daemon did not start");
}

PrivateBus::~PrivateBus() {
  End();
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
}
