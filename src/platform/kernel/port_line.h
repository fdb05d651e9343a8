#pragma once

#include "platform/kernel/port_frame.h"
#include "platform/kernel/unique_fd.h"

#include <span>

/** One connection to a port of another process. Not thread-safe. */
class PortLine {
public:
  explicit PortLine(UniqueFd socket) : fSocket(std::move(socket)) {}
  /** Sends the head and the bytes. B_TIMED_OUT when `until` has passed, B_BAD_PORT_ID when the other side is gone. */
  [[nodiscard]] status_t Send(const PortFrame& head, std::span<const char> bytes, bigtime_t until);
  /** Errors as for `Send`. */
  [[nodiscard]] status_t Receive(PortFrame* frame, bigtime_t until);

private:
  status_t Await(short events, bigtime_t until) const;
  UniqueFd fSocket;
  PortFrameReader fReader;
};
