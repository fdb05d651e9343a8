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

  void Tell(const std::string& order);
  /** The answer to the oldest command without one; empty when the process has ended. */
  std::string Hear();
  std::string Ask(const std::string& order) {
    Tell(order);
    return Hear();
  }
  /** By SIGKILL; returns when the process has ended. */
  void Kill();
  /** SIGSTOP and SIGCONT; return when the process has stopped or continued. */
  void Stop() const;
  void Continue() const;

private:
  pid_t fProcess = 0;
  int fOrders = -1;
  int fAnswers = -1;
};
