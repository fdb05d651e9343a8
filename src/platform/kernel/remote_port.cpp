#include "platform/kernel/remote_port.h"

#include "platform/kernel/port_folder.h"
#include "platform/kernel/timed_wait.h"

#include <poll.h>

namespace {

constexpr bigtime_t kPatienceUs = 3'000'000; // a running process has answered by then
constexpr size_t kMaxIdleLines = 4;

bigtime_t with_patience(bigtime_t deadline) {
  return deadline > B_INFINITE_TIMEOUT - kPatienceUs ? B_INFINITE_TIMEOUT : deadline + kPatienceUs;
}

} // namespace

RemoteQuestion::RemoteQuestion(std::shared_ptr<RemotePort> port, std::unique_ptr<PortLine> line)
    : fPort(std::move(port)), fLine(std::move(line)) {}

status_t RemoteQuestion::ReadOne(bigtime_t until) {
  PortFrame frame;
  if (const status_t status = fLine->Receive(&frame, until); status != B_OK) return status;
  if (frame.flags & kFrameIsAnswer) {
    fHasAnswer = true;
    fAnswer = std::move(frame.bytes);
  } else {
    fHasStatus = true;
    fStatus = frame.code;
  }
  return B_OK;
}

// The answer may overtake the status: the other process sends it from another thread.
status_t RemoteQuestion::AwaitStatus(bigtime_t until) {
  while (!fHasStatus && !fHasAnswer) {
    if (const status_t status = ReadOne(until); status != B_OK) return status;
  }
  return fHasStatus ? fStatus : static_cast<status_t>(B_OK);
}

status_t RemoteQuestion::AwaitAnswer(bigtime_t until) {
  while (!fHasAnswer || !fHasStatus) {
    const status_t status = ReadOne(fHasAnswer ? deadline_after(kPatienceUs) : until);
    if (status == B_OK) continue;
    return fHasAnswer ? static_cast<status_t>(B_OK) : status;
  }
  fPort->PutBack(std::move(fLine));
  return B_OK;
}

status_t RemoteQuestion::Take(std::vector<char>* answer, bigtime_t timeout) {
  if (!fLine) return B_BAD_PORT_ID;
  const status_t status = AwaitAnswer(deadline_after(timeout));
  if (status == B_OK) *answer = std::move(fAnswer);
  if (status != B_TIMED_OUT) fLine.reset();
  return status;
}

status_t RemotePort::Connect(const std::string& name, std::shared_ptr<RemotePort>* port) {
  UniqueFd anchor;
  if (const status_t status = port_folder::connect_to(name, &anchor); status != B_OK) return status;
  port->reset(new RemotePort(name, std::move(anchor)));
  return B_OK;
}

bool RemotePort::IsAlive() const {
  pollfd polled{fAnchor.Get(), POLLIN, 0}; // nothing is ever sent on it: readable means closed
  return poll(&polled, 1, 0) == 0;
}

status_t RemotePort::TakeLine(std::unique_ptr<PortLine>* line) {
  {
    const std::lock_guard lock(fMutex);
    if (!fIdle.empty()) {
      *line = std::move(fIdle.back());
      fIdle.pop_back();
      return B_OK;
    }
  }
  UniqueFd socket;
  const status_t status = port_folder::connect_to(fName, &socket);
  if (status != B_OK) return status == B_TIMED_OUT ? status : static_cast<status_t>(B_BAD_PORT_ID);
  *line = std::make_unique<PortLine>(std::move(socket));
  return IsAlive() ? B_OK : B_BAD_PORT_ID;
}

void RemotePort::PutBack(std::unique_ptr<PortLine> line) {
  const std::lock_guard lock(fMutex);
  if (fIdle.size() < kMaxIdleLines) fIdle.push_back(std::move(line));
}

status_t RemotePort::Ask(int32 code, std::span<const char> bytes, bigtime_t timeout,
                         std::unique_ptr<RemoteQuestion>* question) {
  std::unique_ptr<PortLine> line;
  if (bytes.size() > kMaxPortMessage) return B_MESSAGE_TOO_LARGE;
  if (const status_t status = TakeLine(&line); status != B_OK) return status;
  PortFrame head;
  head.code = code;
  if (question) head.flags |= kFrameWantsAnswer;
  if (timeout == 0) head.flags |= kFrameDontWait;
  head.deadline = deadline_after(timeout == 0 ? kPatienceUs : timeout);
  const bigtime_t until = with_patience(head.deadline);
  if (const status_t status = line->Send(head, bytes, until); status != B_OK) return status;
  auto asked = std::make_unique<RemoteQuestion>(shared_from_this(), std::move(line));
  const status_t status = asked->AwaitStatus(until);
  if (question && status == B_OK) {
    *question = std::move(asked);
  } else if (asked->fHasStatus) {
    PutBack(std::move(asked->fLine));
  }
  return status;
}

status_t RemotePort::Send(int32 code, std::span<const char> bytes, bigtime_t timeout) {
  return Ask(code, bytes, timeout, nullptr);
}
