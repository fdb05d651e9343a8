#pragma once

#include "platform/kernel/unique_fd.h"
#include "tests/support/child_process.h"

#include <string>

/** Another process, which executes commands, one per line; peer_main.cpp lists them. */
class Peer : public ChildProcess {
public:
  Peer();

  void Send(const std::string& command);
  /** The answer to the oldest command without one; empty when the process has ended. */
  std::string Receive();
  std::string Ask(const std::string& command) {
    Send(command);
    return Receive();
  }

private:
  UniqueFd fCommands;
  UniqueFd fAnswers;
};
