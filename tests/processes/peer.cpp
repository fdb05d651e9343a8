#include "tests/processes/peer.h"

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

Peer::Peer() {
  int commands[2];
  int answers[2];
  if (pipe2(commands, O_CLOEXEC) != 0 || pipe2(answers, O_CLOEXEC) != 0) throw std::runtime_error("no pipes");
  Start({PEER_PROGRAM}, {{commands[0], STDIN_FILENO}, {answers[1], STDOUT_FILENO}});
  close(commands[0]);
  close(answers[1]);
  fCommands = UniqueFd(commands[1]);
  fAnswers = UniqueFd(answers[0]);
}

void Peer::Send(const std::string& command) {
  const std::string line = command + "\n";
  [[maybe_unused]] const ssize_t written = write(fCommands.Get(), line.data(), line.size());
}

std::string Peer::Receive() {
  std::string line;
  char c = 0;
  while (read(fAnswers.Get(), &c, 1) == 1) {
    if (c == '\n') return line;
    line.push_back(c);
  }
  return {};
}
