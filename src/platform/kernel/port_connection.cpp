#include "platform/kernel/port_connection.h"

#include "platform/kernel/threads.h"
#include "platform/support/log.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <exception>

namespace {
constexpr size_t kReadAtOnce = size_t{64} << 10; // per turn, so that senders are served in turn
}

PortConnection::PortConnection(UniqueFd socket, std::shared_ptr<PortSink> sink)
    : fSender(std::make_shared<PortReturn>(std::move(socket))), fSink(std::move(sink)), fLastHeard(system_time()) {}

PortConnection::~PortConnection() {
  fSender->Close();
}

short PortConnection::AwaitedEvents() const {
  const short read = fWaiting ? POLLRDHUP : POLLIN;
  return static_cast<short>(read | (fSender->HasUnsent() ? POLLOUT : 0));
}

template <typename Call>
void PortConnection::Guard(Call call) {
  try {
    call();
  } catch (const std::exception& error) {
    log_error("a message from another program", error.what());
    fOver = true;
  }
}

size_t PortConnection::HeldBytes() const {
  const size_t held = fReader.HeldBytes() + (fWaiting ? fWaiting->bytes.size() : 0);
  return held <= kReadAtOnce ? 0 : held;
}

void PortConnection::Handle(short events) {
  fThread.Check();
  Guard([&] { HandleEvents(events); });
}

void PortConnection::HandleEvents(short events) {
  if (events & POLLOUT) fOver |= !fSender->Flush();
  if (events & POLLIN) Read();
  // The message of a sender that has left is dropped: it may have reported a failure to its user.
  else if (events & (POLLRDHUP | POLLHUP | POLLERR))
    fOver = true;
}

void PortConnection::Read() {
  std::array<char, kReadAtOnce> bytes;
  const ssize_t count = recv(Socket(), bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (count <= 0) {
    fOver = true;
    return;
  }
  fLastHeard = system_time();
  fReader.Feed({bytes.data(), static_cast<size_t>(count)});
  TakeFrames();
}

void PortConnection::TakeFrames() {
  const bigtime_t now = system_time();
  PortFrame frame;
  while (!fOver && fReader.Next(&frame)) {
    if (!Settle(&frame, now)) {
      fWaiting = std::move(frame);
      return;
    }
  }
  if (!fReader.IsBroken()) return;
  SendStatus(B_BAD_VALUE);
  fOver = true;
}

bool PortConnection::Settle(PortFrame* frame, bigtime_t now) {
  const status_t status = now <= frame->deadline ? fSink->Offer(frame, fSender) : status_t{B_TIMED_OUT};
  if (status == B_WOULD_BLOCK && !(frame->flags & kFrameDontWait)) return false;
  SendStatus(status);
  return true;
}

void PortConnection::SendStatus(status_t status) {
  PortFrame frame;
  frame.code = status;
  frame.flags = kFrameIsStatus;
  fOver |= !fSender->Send(frame);
}

void PortConnection::LookAgain(bigtime_t now) {
  fThread.Check();
  if (fOver || !fWaiting) return;
  Guard([&] {
    if (!Settle(&*fWaiting, now)) return;
    fWaiting.reset();
    TakeFrames(); // in case the sender did not wait for the status
  });
}

bigtime_t PortConnection::Deadline() const {
  return fWaiting ? fWaiting->deadline : B_INFINITE_TIMEOUT;
}
