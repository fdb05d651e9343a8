#pragma once

#include "platform/kernel/port_frame.h"
#include "platform/kernel/unique_fd.h"

#include <mutex>
#include <string>

/** The way back to a connected sender, for statuses and answers. Owns the socket. Any thread may send; the ports'
    service reads the socket, and closes it when the sender is gone. */
class PortReturn {
public:
  explicit PortReturn(UniqueFd socket) : fSocket(std::move(socket)) {}

  /** Does not block: the service flushes later what the socket does not take now. False when the sender is gone. */
  [[nodiscard]] bool Send(const PortFrame& frame);
  /** On the service's thread. False when the sender is gone. */
  [[nodiscard]] bool Flush();
  bool HasUnsent();
  void Close();
  /** Shuts the connection down; the service closes it then. */
  void Break() noexcept;
  /** On the service's thread, before `Close`. */
  int Socket() const { return fSocket.Get(); }

private:
  bool SendSome();

  /** Guards fSocket, fUnsent and fClosed; the service, which alone closes the socket, reads fSocket without. */
  std::mutex fMutex;
  UniqueFd fSocket;
  std::string fUnsent;
  bool fClosed = false;
};
