#include "platform/kernel/port_line.h"

#include "platform/kernel/timed_wait.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <cerrno>

status_t PortLine::Await(short events, bigtime_t until) const {
  while (until > system_time()) {
    pollfd polled{fSocket.Get(), events, 0};
    if (poll(&polled, 1, poll_timeout(until)) > 0) return B_OK;
  }
  return B_TIMED_OUT;
}

status_t PortLine::Send(const PortFrame& frame, std::span<const char> bytes, bigtime_t until) {
  auto head = frame_head(frame, bytes.size());
  std::array<iovec, 2> parts{iovec{head.data(), head.size()}, iovec{const_cast<char*>(bytes.data()), bytes.size()}};
  while (parts[0].iov_len + parts[1].iov_len > 0) {
    msghdr message{};
    message.msg_iov = parts.data();
    message.msg_iovlen = parts.size();
    const ssize_t sent = sendmsg(fSocket.Get(), &message, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent < 0 && errno != EAGAIN && errno != EINTR) return B_BAD_PORT_ID;
    if (sent < 0) {
      if (const status_t status = Await(POLLOUT, until); status != B_OK) return status;
      continue;
    }
    size_t left = static_cast<size_t>(sent);
    for (iovec& part : parts) {
      const size_t taken = std::min(left, part.iov_len);
      part.iov_base = static_cast<char*>(part.iov_base) + taken;
      part.iov_len -= taken;
      left -= taken;
    }
  }
  return B_OK;
}

status_t PortLine::Receive(PortFrame* frame, bigtime_t until) {
  std::array<char, 16384> bytes;
  while (!fReader.Next(frame)) {
    if (fReader.IsBroken()) return B_BAD_PORT_ID;
    if (const status_t status = Await(POLLIN, until); status != B_OK) return status;
    const ssize_t count = recv(fSocket.Get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) continue;
    if (count <= 0) return B_BAD_PORT_ID;
    fReader.Feed({bytes.data(), static_cast<size_t>(count)});
  }
  return B_OK;
}
