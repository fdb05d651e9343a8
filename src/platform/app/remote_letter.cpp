#include "platform/app/remote_letter.h"

#include <cstring>

namespace {

constexpr size_t kMaxPortName = 80;

struct FixedHead {
  uint64 looperToken;
  uint64 handlerToken;
  uint64 replyLooperToken;
  uint64 replyHandlerToken;
  uint64 replyPortLength;
};

} // namespace

std::vector<char> letter_bytes(const LetterHead& head, const BMessage& message) {
  const RemoteAddress& reply = head.replyTo;
  const FixedHead fixed{head.looperToken, head.handlerToken, reply.looperToken, reply.handlerToken, reply.port.size()};
  const char* const start = reinterpret_cast<const char*>(&fixed);
  const std::vector<char> flat = message.Flatten();
  std::vector<char> bytes(start, start + sizeof fixed);
  bytes.reserve(sizeof fixed + reply.port.size() + flat.size());
  bytes.insert(bytes.end(), reply.port.begin(), reply.port.end());
  bytes.insert(bytes.end(), flat.begin(), flat.end());
  return bytes;
}

bool read_letter_head(std::span<const char> bytes, LetterHead* head, std::span<const char>* body) {
  FixedHead fixed{};
  if (bytes.size() < sizeof fixed) return false;
  std::memcpy(&fixed, bytes.data(), sizeof fixed);
  const std::span<const char> rest = bytes.subspan(sizeof fixed);
  if (fixed.replyPortLength > std::min(kMaxPortName, rest.size())) return false;
  std::string port(rest.data(), fixed.replyPortLength);
  *head = {fixed.looperToken, fixed.handlerToken, {std::move(port), fixed.replyLooperToken, fixed.replyHandlerToken}};
  *body = rest.subspan(fixed.replyPortLength);
  return true;
}
