#pragma once

#include "platform/kernel/port_frame.h"
#include "platform/kernel/unique_fd.h"

#include <mutex>
#include <string>

/** The way back to a connected sender: its status, and the answer to its question. Owns the socket. Any thread may
    send; the ports' service reads the socket, and closes the way when the sender is gone. */
class PortReturn {
public:
  explicit PortReturn(UniqueFd socket) : fSocket(std::move(socket)) {}

  /** Never waits: what the socket does not take now, `Flush` sends later. False when the sender is gone. */
  bool Send(const PortFrame& frame);
  /** On the service's thread. False when the sender is gone. */
  bool Flush();
  bool HasUnsent();
  void Close();
  /** The sender sees the connection end; the service closes it then. */
  void Break() noexcept;
  /** On the service's thread, before `Close`. */
  int Socket() const { return fSocket.Get(); }

private:
  bool SendSome();

  /** Guards all that follows; but the service alone closes the socket, so it may read it without. */
  std::mutex fMutex;
  UniqueFd fSocket;
  std::string fUnsent;
  bool fClosed = false;
};
