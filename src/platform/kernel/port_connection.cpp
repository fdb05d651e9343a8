#include "platform/kernel/port_connection.h"

#include "platform/kernel/threads.h"
#include "platform/support/log.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <exception>

namespace {
constexpr size_t kReadAtOnce = size_t{64} << 10; // then it is the next sender's turn
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
  Guard([&] { HandleEvents(events); });
}

void PortConnection::HandleEvents(short events) {
  if (events & POLLOUT) fOver |= !fSender->Flush();
  if (events & POLLIN) Read();
  // A sender that has left no longer wants its waiting message delivered: it may have told its user so.
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
  Tell(B_BAD_VALUE);
  fOver = true;
}

bool PortConnection::Settle(PortFrame* frame, bigtime_t now) {
  const status_t status = now <= frame->deadline ? fSink->Offer(frame, fSender) : status_t{B_TIMED_OUT};
  if (status == B_WOULD_BLOCK && !(frame->flags & kFrameDontWait)) return false;
  Tell(status);
  return true;
}

void PortConnection::Tell(status_t status) {
  PortFrame told;
  told.code = status;
  told.flags = kFrameIsStatus;
  fOver |= !fSender->Send(told);
}

void PortConnection::LookAgain(bigtime_t now) {
  if (fOver || !fWaiting) return;
  Guard([&] {
    if (!Settle(&*fWaiting, now)) return;
    fWaiting.reset();
    TakeFrames(); // a sender that did not wait for its status
  });
}

bigtime_t PortConnection::Deadline() const {
  return fWaiting ? fWaiting->deadline : B_INFINITE_TIMEOUT;
}
