#include "platform/kernel/port_return.h"

#include "platform/kernel/port_service.h"

#include <sys/socket.h>

#include <cerrno>

namespace {
/** Room for the largest answer; a sender that asks again without reading is disconnected. */
constexpr size_t kMaxUnsent = kMaxPortMessage + 4096;
} // namespace

bool PortReturn::Send(const PortFrame& frame) {
  const auto head = frame_head(frame, frame.bytes.size());
  bool hasMore = false;
  {
    const std::lock_guard lock(fMutex);
    if (fClosed || fUnsent.size() + head.size() + frame.bytes.size() > kMaxUnsent) return false;
    fUnsent.append(head.data(), head.size()).append(frame.bytes.data(), frame.bytes.size());
    if (!SendSome()) return false;
    hasMore = !fUnsent.empty();
  }
  if (hasMore) port_service::look_again();
  return true;
}

bool PortReturn::Flush() {
  const std::lock_guard lock(fMutex);
  return !fClosed && SendSome();
}

bool PortReturn::SendSome() {
  size_t done = 0;
  while (done < fUnsent.size()) {
    const ssize_t sent = send(fSocket.Get(), fUnsent.data() + done, fUnsent.size() - done, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent < 0 && errno != EAGAIN) return false;
    if (sent < 0) break;
    done += static_cast<size_t>(sent);
  }
  fUnsent.erase(0, done);
  return true;
}

bool PortReturn::HasUnsent() {
  const std::lock_guard lock(fMutex);
  return !fUnsent.empty();
}

void PortReturn::Close() {
  const std::lock_guard lock(fMutex);
  fClosed = true;
  fUnsent = {};
  const UniqueFd ended = std::move(fSocket);
}

void PortReturn::Break() noexcept {
  const std::lock_guard lock(fMutex);
  if (fSocket) shutdown(fSocket.Get(), SHUT_RDWR);
}
