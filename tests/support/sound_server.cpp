#include "tests/support/sound_server.h"

#include "tests/support/eventually.h"
#include "tests/support/output_of.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace {

bool takes_connections(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool isTaken = connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(connection);
  return isTaken;
}

} // namespace

SoundServer::SoundServer() {
  setenv("PULSE_SERVER", ("unix:" + fFolder.File("socket")).c_str(), 1);
  setenv("PULSE_COOKIE", fFolder.File("cookie").c_str(), 1);
  setenv("PULSE_RUNTIME_PATH", fFolder.Path().c_str(), 1);
  setenv("PULSE_STATE_PATH", fFolder.Path().c_str(), 1);
  Start();
}

SoundServer::~SoundServer() {
  for (const char* const name : {"PULSE_SERVER", "PULSE_COOKIE", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH"})
    unsetenv(name);
}

void SoundServer::Plug(const std::string& sink) {
  fPlugged = output_of("pactl load-module module-null-sink rate=48000 channels=2 sink_name=" + sink);
}

void SoundServer::Unplug() {
  output_of("pactl unload-module " + fPlugged);
}

std::string SoundServer::Streams() {
  return output_of("pactl list short sink-inputs");
}

void SoundServer::Start() {
  const std::string socket = fFolder.File("socket");
  fProcess.Start({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
                  "--realtime=no", "--log-target=null", "--load=module-null-sink rate=48000 channels=2",
                  "--load=module-native-protocol-unix socket=" + socket + " auth-cookie=" + fFolder.File("cookie")});
  if (!eventually([&] { return takes_connections(socket); }))
    throw std::runtime_error("pulseaudio takes no connections");
}
