#include "bench/player_run.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

constexpr long kPlayingMs = 300; ///< earlier answers may come before the first sound

pid_t start(std::string player, std::vector<std::string> words) {
  std::vector<char*> arguments{player.data()};
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t pid = 0;
  if (posix_spawn(&pid, player.c_str(), nullptr, nullptr, arguments.data(), environ) != 0)
    throw std::runtime_error("cannot start " + player);
  return pid;
}

void stop(pid_t pid) {
  kill(pid, SIGTERM);
  for (int i = 0; i < 100; ++i, usleep(20'000))
    if (waitpid(pid, nullptr, WNOHANG) == pid) return;
  kill(pid, SIGKILL);
  waitpid(pid, nullptr, 0);
}

std::vector<TProbe> read_log(const std::string& path) {
  std::vector<TProbe> probes;
  std::ifstream file(path);
  int64_t askedUs = 0, answeredUs = 0;
  long positionMs = 0;
  while (file >> askedUs >> answeredUs >> positionMs)
    if (positionMs > kPlayingMs) probes.push_back({askedUs, static_cast<double>(positionMs) / 1000});
  return probes;
}

} // namespace

std::vector<TProbe> probe_player(const std::string& player, std::vector<std::string> words, double seconds) {
  const std::string log = std::filesystem::temp_directory_path() / ("chain_probe_" + std::to_string(getpid()));
  setenv("CHAIN_PROBE_LOG", log.c_str(), 1);
  const pid_t pid = start(player, std::move(words));
  usleep(static_cast<useconds_t>(seconds * 1e6));
  stop(pid);
  const auto probes = read_log(log);
  std::filesystem::remove(log);
  if (probes.empty()) throw std::runtime_error(player + " told no position");
  return probes;
}
