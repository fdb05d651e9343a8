#include "player/sound/sound_devices.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

constexpr const char* kCards = "/dev/snd";

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

/** The socket paths in PULSE_SERVER, whose entries are "unix:/path", "{machine}unix:/path" or "/path". */
std::vector<std::string> listed_sockets() {
  std::vector<std::string> paths;
  const std::string list = variable("PULSE_SERVER");
  for (size_t start = 0; start < list.size();) {
    const size_t end = std::min(list.find(' ', start), list.size());
    const std::string_view server = std::string_view(list).substr(start, end - start);
    if (const size_t path = server.find('/'); path != std::string_view::npos) paths.emplace_back(server.substr(path));
    start = end + 1;
  }
  return paths;
}

std::vector<std::string> sockets() {
  std::vector<std::string> paths = listed_sockets();
  const std::string runtime = variable("XDG_RUNTIME_DIR");
  paths.push_back(variable("PULSE_RUNTIME_PATH") + "/native");
  paths.push_back(runtime + "/pulse/native");
  paths.push_back(runtime + "/pipewire-0");
  return paths;
}

std::string state_of(const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) != 0) return "-";
  return std::to_string(file.st_ino) + ' ' + std::to_string(file.st_ctim.tv_sec) + ' ' +
         std::to_string(file.st_ctim.tv_nsec);
}

} // namespace

std::string sound_devices() {
  std::string devices;
  for (const std::string& path : sockets()) devices += path + ' ' + state_of(path) + '\n';
  // The folder's timestamp changes with the devices in it.
  return devices + kCards + ' ' + state_of(kCards);
}
