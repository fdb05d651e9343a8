#pragma once

#include <string>
#include <sys/types.h>

/** Another process, which does what it is told, a line at a time: peer_main.cpp lists what it understands. */
class Peer {
public:
  Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer() { Kill(); }

  void Tell(const std::string& order);
  /** The answer to the oldest order that is still open; empty when the process has ended. */
  std::string Hear();
  std::string Ask(const std::string& order) {
    Tell(order);
    return Hear();
  }
  /** At once, with nothing tidied up; returns when the process is no more. */
  void Kill();
  /** Freezes it, and lets it go on; both return when it is so. */
  void Stop() const;
  void Continue() const;

private:
  pid_t fProcess = 0;
  int fOrders = -1;
  int fAnswers = -1;
};
