#include "platform/app/message.h"

#include "platform/app/message_body.h"
#include "platform/app/remote_mail.h"
#include "platform/kernel/timed_wait.h"

#include <utility>

bool ReplySlot::Put(const BMessage& answer) {
  BMessage copy(answer); // before anything changes: this may fail
  const std::lock_guard lock(fMutex);
  if (fDone) return false;
  fDone = true;
  fAnswer = std::move(copy);
  fArrived.notify_all();
  return true;
}

void ReplySlot::Drop() noexcept {
  const std::lock_guard lock(fMutex);
  if (fDone) return;
  fDone = fDropped = true;
  fArrived.notify_all();
}

std::optional<BMessage> ReplySlot::Take(bigtime_t timeout) {
  std::unique_lock lock(fMutex);
  if (wait_until_ready(&fArrived, &lock, timeout, [this] { return fDone; }) != B_OK) return std::nullopt;
  if (std::exchange(fDropped, false)) return BMessage(B_NO_REPLY_CODE);
  return std::exchange(fAnswer, std::nullopt);
}

BMessage::Envelope::~Envelope() {
  if (asker) asker->Drop();
}

BMessenger BMessage::ReturnAddress() const {
  if (!fEnvelope) return {};
  return fEnvelope->remoteReplyTo.port.empty() ? fEnvelope->replyTo : RemoteMail::Find(fEnvelope->remoteReplyTo);
}
bool BMessage::IsSourceWaiting() const {
  return fEnvelope && fEnvelope->asker;
}
bool BMessage::IsSourceRemote() const {
  return fEnvelope && fEnvelope->remote;
}
bool BMessage::WasDropped() const {
  return fEnvelope && fEnvelope->dropped;
}

void BMessage::SetDropped(bool fromOtherApplication) {
  fEnvelope = std::make_shared<Envelope>();
  fEnvelope->dropped = true;
  fEnvelope->remote = fromOtherApplication;
}

status_t BMessage::SendReply(uint32 code) const {
  const BMessage reply(code);
  return SendReply(&reply);
}

status_t BMessage::SendReply(const BMessage* reply) const {
  if (!fEnvelope) return B_NO_REPLY;
  if (fEnvelope->asker) return fEnvelope->asker->Put(*reply) ? B_OK : B_BAD_PORT_ID;
  if (!fEnvelope->remoteReplyTo.port.empty()) return RemoteMail::Reply(fEnvelope->remoteReplyTo, *reply);
  if (fEnvelope->replyTo == BMessenger()) return B_NO_REPLY;
  return fEnvelope->replyTo.SendLater(*reply, 0);
}

void BMessage::Address(uint64 handlerToken, const BMessenger& replyTo, std::shared_ptr<ReplyReceiver> asker,
                       std::shared_ptr<void> mark) {
  auto envelope = std::make_shared<Envelope>();
  envelope->handlerToken = handlerToken;
  envelope->replyTo = replyTo;
  envelope->asker = std::move(asker);
  envelope->mark = std::move(mark);
  if (fEnvelope) {
    envelope->remote = fEnvelope->remote;
    envelope->dropped = fEnvelope->dropped;
  }
  fEnvelope = std::move(envelope);
}
