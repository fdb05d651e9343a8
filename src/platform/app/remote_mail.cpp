#include "platform/app/remote_mail.h"

#include "platform/app/looper_core.h"
#include "platform/app/message_body.h"
#include "platform/app/outbox.h"
#include "platform/app/return_addresses.h"
#include "platform/app/signatures.h"
#include "platform/kernel/port_folder.h"
#include "platform/kernel/port_service.h"
#include "platform/kernel/remote_port.h"
#include "platform/support/log.h"

#include <unistd.h>

#include <atomic>

/** An asker in another process. */
class RemoteReceiver : public ReplyReceiver {
public:
  explicit RemoteReceiver(std::shared_ptr<PortReturn> way) : fWay(std::move(way)) {}
  /** The question was refused: it will not be answered. */
  void Forget() { fDone = true; }

  bool Put(const BMessage& answer) override {
    if (fDone.exchange(true)) return false;
    PortFrame frame;
    frame.flags = kFrameIsAnswer;
    frame.bytes = answer.Flatten();
    const bool fits = frame.bytes.size() <= kMaxPortMessage;
    if (!fits) frame.bytes.clear();
    return fWay->Send(frame) && fits;
  }

  /** Sends an answer without bytes. If that fails the connection is closed, which releases the asker as well. */
  void Drop() noexcept override {
    if (fDone.exchange(true)) return;
    try {
      PortFrame frame;
      frame.flags = kFrameIsAnswer;
      if (fWay->Send(frame)) return;
    } catch (...) {
      // out of memory
    }
    fWay->Break();
  }

private:
  const std::shared_ptr<PortReturn> fWay;
  std::atomic<bool> fDone{false};
};

namespace {

constexpr int32 kLetterCode = 'LETR';

/** The answer of another process. */
class RemoteAnswer : public AnswerSource {
public:
  explicit RemoteAnswer(std::unique_ptr<RemoteQuestion> question) : fQuestion(std::move(question)) {}

  std::optional<BMessage> Take(bigtime_t timeout) override {
    std::vector<char> bytes;
    const status_t status = fQuestion->Take(&bytes, timeout);
    if (status == B_TIMED_OUT) return std::nullopt;
    BMessage answer;
    if (status != B_OK || answer.Unflatten(bytes.data(), bytes.size()) != B_OK) return BMessage(B_NO_REPLY_CODE);
    return answer;
  }

private:
  const std::unique_ptr<RemoteQuestion> fQuestion;
};

/** Receives the letters to the owner of a signature; without a signature, only answers to loopers that have asked. */
class LetterBox : public PortSink {
public:
  explicit LetterBox(std::string signature) : fSignature(std::move(signature)) {}
  status_t Offer(PortFrame* frame, const std::shared_ptr<PortReturn>& sender) override {
    return RemoteMail::Deliver(*frame, sender, find_offer(fSignature));
  }

private:
  const std::string fSignature;
};

constexpr std::string_view kSignaturePort = "app:";

/** Escapes the '/' of a signature, which a file name cannot contain. */
std::string port_of(const std::string& signature) {
  std::string name(kSignaturePort);
  for (const char c : signature) {
    if (c == '/')
      name += "%2F";
    else if (c == '%')
      name += "%25";
    else
      name += c;
  }
  return name;
}

std::string signature_of(std::string_view port) {
  std::string signature;
  for (size_t i = kSignaturePort.size(); i < port.size(); ++i) {
    const std::string_view coded = port.substr(i, 3);
    if (coded != "%2F" && coded != "%25") {
      signature += port[i];
      continue;
    }
    signature += coded == "%2F" ? '/' : '%';
    i += 2;
  }
  return signature;
}

/** The port for answers; created with the first message that requests one, closed at exit. */
class OwnPort {
public:
  OwnPort() : fName("re:" + std::to_string(getpid())) {
    fStatus = port_service::open(fName, std::make_shared<LetterBox>(std::string()));
  }
  ~OwnPort() { port_service::close(fName); }
  const std::string& Name() const { return fName; }
  status_t InitCheck() const { return fStatus; }

private:
  const std::string fName;
  status_t fStatus;
};

const OwnPort& own_port() {
  static const OwnPort port;
  return port;
}

} // namespace

void RemoteMail::Publish(const std::string& signature) {
  const status_t status = port_service::open(port_of(signature), std::make_shared<LetterBox>(signature));
  // Expected: another process has the name, or there is no private folder (logged). The owner is found in this process.
  if (status != B_OK && status != B_NAME_IN_USE && status != B_PERMISSION_DENIED)
    log_error(signature, "other programs cannot reach this one: no port");
}

void RemoteMail::Withdraw(const std::string& signature) {
  port_service::close(port_of(signature));
}

std::vector<std::string> RemoteMail::Signatures() {
  std::vector<std::string> signatures;
  for (const std::string& port : port_folder::names())
    if (port.starts_with(kSignaturePort)) signatures.push_back(signature_of(port));
  return signatures;
}

BMessenger RemoteMail::Find(const std::string& signature) {
  return Find(RemoteAddress{port_of(signature), 0, 0});
}

BMessenger RemoteMail::Find(const RemoteAddress& address) {
  BMessenger found;
  if (port_service::serves(address.port)) return found; // its owner in this process is gone
  const port_id port = remote_ports::find(address.port);
  if (port < 0) return found;
  found.fPort = port;
  found.fLooperToken = address.looperToken;
  found.fHandlerToken = address.handlerToken;
  return found;
}

bool RemoteMail::IsThere(const BMessenger& target) {
  return remote_ports::get(target.fPort) != nullptr;
}

status_t RemoteMail::ReturnAddress(const BMessenger& replyTo, RemoteAddress* address) {
  if (replyTo == BMessenger()) return B_OK;
  if (replyTo.fPort == 0) {
    *address = {own_port().Name(), return_addresses::number_of(replyTo), 0};
    return own_port().InitCheck();
  }
  const auto port = remote_ports::get(replyTo.fPort);
  if (!port) return B_BAD_PORT_ID;
  *address = {port->Name(), replyTo.fLooperToken, replyTo.fHandlerToken};
  return B_OK;
}

status_t RemoteMail::Send(const BMessenger& target, const BMessage& message, const BMessenger& replyTo,
                          bigtime_t timeout) {
  const auto port = remote_ports::get(target.fPort);
  if (!port) return B_BAD_PORT_ID;
  LetterHead head{target.fLooperToken, target.fHandlerToken, {}};
  if (const status_t status = ReturnAddress(replyTo, &head.replyTo); status != B_OK) return status;
  return port->Send(kLetterCode, letter_bytes(head, message), timeout);
}

status_t RemoteMail::Ask(const BMessenger& target, const BMessage& message, bigtime_t timeout,
                         std::shared_ptr<AnswerSource>* answer) {
  const auto port = remote_ports::get(target.fPort);
  if (!port) return B_BAD_PORT_ID;
  const LetterHead head{target.fLooperToken, target.fHandlerToken, {}};
  std::unique_ptr<RemoteQuestion> question;
  const status_t status = port->Ask(kLetterCode, letter_bytes(head, message), timeout, &question);
  if (status == B_OK) *answer = std::make_shared<RemoteAnswer>(std::move(question));
  return status;
}

status_t RemoteMail::SendLater(const BMessenger& target, const BMessage& message, bigtime_t timeout,
                               std::shared_ptr<void> mark) {
  const auto port = remote_ports::get(target.fPort);
  if (!port) return B_BAD_PORT_ID;
  const LetterHead head{target.fLooperToken, target.fHandlerToken, {}};
  const auto letter = std::make_shared<std::vector<char>>(letter_bytes(head, message));
  return outbox::post(port->Name(), [port, letter, timeout, held = std::move(mark)] {
    return port->Send(kLetterCode, *letter, timeout);
  });
}

status_t RemoteMail::Reply(const RemoteAddress& address, const BMessage& message) {
  // The look-up may block on the other process as well.
  return outbox::post(address.port, [address, message] { return Send(Find(address), message, BMessenger(), 0); });
}

status_t RemoteMail::Refuse(uint32 code, const PortFrame& frame, const std::shared_ptr<PortReturn>& sender,
                            const RemoteAddress& replyTo) {
  static LimitedLog log;
  std::string name;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const char c = static_cast<char>(code >> shift & 0xff);
    name += c >= ' ' && c <= '~' ? c : '?';
  }
  log.Error("refused a message from another program", "'" + name + "' is not offered");
  BMessage answer(B_MESSAGE_NOT_UNDERSTOOD);
  answer.AddInt32("error", B_PERMISSION_DENIED);
  answer.AddString("message", "This is not offered to other programs");
  if (frame.flags & kFrameWantsAnswer) return RemoteReceiver(sender).Put(answer) ? B_OK : B_BAD_PORT_ID;
  return replyTo.port.empty() ? B_PERMISSION_DENIED : Reply(replyTo, answer);
}

status_t RemoteMail::Deliver(const PortFrame& frame, const std::shared_ptr<PortReturn>& sender,
                             const LetterOffer& offer) {
  LetterHead head;
  std::span<const char> body;
  if (frame.code != kLetterCode || !read_letter_head(frame.bytes, &head, &body)) return B_BAD_VALUE;
  const bool isAnswer = head.looperToken != 0;
  const BMessenger target = isAnswer ? return_addresses::find(head.looperToken) : offer.target;
  const auto looper = token_registry::find_looper(target.fLooperToken);
  if (!looper) return B_BAD_PORT_ID;
  if (!looper->queue.HasRoom()) return B_WOULD_BLOCK; // before parsing a message that cannot be queued yet
  BMessage message;
  if (message.Unflatten(body.data(), body.size()) != B_OK) return B_BAD_VALUE;
  const bool isTaken = isAnswer ? looper->TakesAnswer(message.what) : offer.Takes(message.what);
  if (!isTaken) return Refuse(message.what, frame, sender, head.replyTo);
  auto asker = frame.flags & kFrameWantsAnswer ? std::make_shared<RemoteReceiver>(sender) : nullptr;
  auto envelope = std::make_shared<BMessage::Envelope>();
  envelope->handlerToken = target.fHandlerToken;
  envelope->asker = asker;
  envelope->remote = true;
  envelope->remoteReplyTo = std::move(head.replyTo);
  message.fEnvelope = std::move(envelope);
  const status_t status = looper->queue.Offer([&message] { return std::move(message); });
  if (status != B_OK && asker) asker->Forget();
  return status;
}
