#include "tests/processes/peer.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

extern char** environ;

Peer::Peer() {
  int commands[2];
  int answers[2];
  if (pipe2(commands, O_CLOEXEC) != 0 || pipe2(answers, O_CLOEXEC) != 0) throw std::runtime_error("no pipes");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, commands[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, answers[1], STDOUT_FILENO);
  std::string program = PEER_PROGRAM;
  char* const arguments[] = {program.data(), nullptr};
  if (posix_spawn(&fProcess, program.c_str(), &actions, nullptr, arguments, environ) != 0) {
    throw std::runtime_error("the other process does not start");
  }
  posix_spawn_file_actions_destroy(&actions);
  close(commands[0]);
  close(answers[1]);
  fCommands = commands[1];
  fAnswers = answers[0];
}

void Peer::Send(const std::string& command) {
  const std::string line = command + "\n";
  [[maybe_unused]] const ssize_t written = write(fCommands, line.data(), line.size());
}

std::string Peer::Receive() {
  std::string line;
  char c = 0;
  while (read(fAnswers, &c, 1) == 1) {
    if (c == '\n') return line;
    line.push_back(c);
  }
  return {};
}

void Peer::Stop() const {
  kill(fProcess, SIGSTOP);
  waitpid(fProcess, nullptr, WUNTRACED);
}

void Peer::Continue() const {
  kill(fProcess, SIGCONT);
  waitpid(fProcess, nullptr, WCONTINUED);
}

void Peer::Kill() {
  if (fProcess == 0) return;
  kill(fProcess, SIGKILL);
  waitpid(fProcess, nullptr, 0);
  close(fCommands);
  close(fAnswers);
  fProcess = 0;
}
