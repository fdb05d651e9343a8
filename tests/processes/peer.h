#pragma once

#include <string>
#include <sys/types.h>

/** Another process, which executes commands, one per line; peer_main.cpp lists them. */
class Peer {
public:
  Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer() { Kill(); }

  void Send(const std::string& command);
  /** The answer to the oldest command without one; empty when the process has ended. */
  std::string Receive();
  std::string Ask(const std::string& command) {
    Send(command);
    return Receive();
  }
  /** By SIGKILL; returns when the process has ended. */
  void Kill();
  /** SIGSTOP and SIGCONT; return when the process has stopped or continued. */
  void Stop() const;
  void Continue() const;

private:
  pid_t fProcess = 0;
  int fCommands = -1;
  int fAnswers = -1;
};
