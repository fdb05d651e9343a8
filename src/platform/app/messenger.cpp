#include "platform/app/messenger.h"

#include "platform/app/looper_core.h"
#include "platform/app/message_body.h"
#include "platform/app/nonblocking_thread.h"
#include "platform/app/remote_mail.h"
#include "platform/app/signatures.h"

#include <algorithm>
#include <utility>

BMessenger::BMessenger(const BHandler* handler, const BLooper* looper, status_t* result) {
  const BLooper* target = looper ? looper : (handler ? handler->Looper() : nullptr);
  if (target != nullptr) {
    fLooperToken = target->fCore->token;
    if (handler && handler != target) fHandlerToken = handler->fToken;
  }
  if (result) *result = target ? B_OK : B_BAD_HANDLER;
}

BMessenger::BMessenger(const char* signature, status_t* result) {
  const std::string owner = signature ? signature : "";
  *this = find_signature(owner);
  if (!IsValid()) *this = RemoteMail::Find(owner);
  if (result) *result = IsValid() ? B_OK : B_NAME_NOT_FOUND;
}

bool BMessenger::IsValid() const {
  if (fPort != 0) return RemoteMail::IsThere(*this);
  const auto core = token_registry::find_looper(LocalToken());
  return core && !core->queue.IsClosed();
}

BHandler* BMessenger::Target(BLooper** looper) const {
  const auto core = token_registry::find_looper(LocalToken());
  if (looper) *looper = core ? core->looper : nullptr;
  if (!core) return nullptr;
  if (fHandlerToken == 0) return core->looper;
  const auto found = std::find_if(core->handlers.begin(), core->handlers.end(),
                                  [this](const BHandler* h) { return h->fToken == fHandlerToken; });
  return found == core->handlers.end() ? nullptr : *found;
}

bool BMessenger::LockTarget() const {
  return LockTargetWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BMessenger::LockTargetWithTimeout(bigtime_t timeout) const {
  const auto core = token_registry::find_looper(LocalToken());
  return core ? core->Lock(NonblockingThread::Bounded(timeout)) : B_BAD_PORT_ID;
}

status_t BMessenger::SendMessage(uint32 code, const BHandler* replyTo) const {
  const BMessage message(code);
  return SendMessage(&message, replyTo);
}

status_t BMessenger::SendMessage(const BMessage* message, const BHandler* replyTo, bigtime_t timeout) const {
  return SendMessage(message, replyTo ? BMessenger(replyTo) : BMessenger(), timeout);
}

status_t BMessenger::SendMessage(const BMessage* message, const BMessenger& replyTo, bigtime_t timeout) const {
  timeout = NonblockingThread::Bounded(timeout);
  if (fPort != 0) return RemoteMail::Send(*this, *message, replyTo, timeout);
  const auto core = token_registry::find_looper(LocalToken());
  if (!core) return B_BAD_PORT_ID;
  BMessage copy(*message);
  copy.Address(fHandlerToken, replyTo, nullptr);
  return core->Post(std::move(copy), timeout);
}

status_t BMessenger::SendMessage(const BMessage* message, BPendingReply* pending, bigtime_t deliveryTimeout) const {
  return Ask(message, pending, deliveryTimeout);
}

status_t BMessenger::Ask(const BMessage* message, BPendingReply* pending, bigtime_t deliveryTimeout) const {
  deliveryTimeout = NonblockingThread::Bounded(deliveryTimeout);
  if (fPort != 0) return RemoteMail::Ask(*this, *message, deliveryTimeout, &pending->fSource);
  const auto core = token_registry::find_looper(LocalToken());
  if (!core) return B_BAD_PORT_ID;
  const auto slot = std::make_shared<ReplySlot>();
  pending->fSource = slot;
  BMessage copy(*message);
  copy.Address(fHandlerToken, {}, slot);
  return core->Post(std::move(copy), deliveryTimeout);
}

status_t BMessenger::SendMessage(const BMessage* message, BMessage* reply, bigtime_t deliveryTimeout,
                                 bigtime_t replyTimeout) const {
  BPendingReply pending;
  const status_t status = Ask(message, &pending, deliveryTimeout);
  return status == B_OK ? pending.Wait(reply, replyTimeout) : status;
}

status_t BPendingReply::Wait(BMessage* reply, bigtime_t timeout) {
  if (!fSource) return B_NO_INIT;
  std::optional<BMessage> answer = fSource->Take(NonblockingThread::Bounded(timeout));
  if (!answer) return B_TIMED_OUT;
  *reply = std::move(*answer);
  return B_OK;
}

status_t BMessenger::SendCoalesced(uint32 code) const {
  return SendCoalesced(BMessage(code));
}

status_t BMessenger::SendCoalesced(const BMessage& notice) const {
  if (fPort != 0) return SendMessage(&notice, BMessenger(), 0); // another process has its own queue
  const auto core = token_registry::find_looper(LocalToken());
  if (!core) return B_BAD_PORT_ID;
  BMessage copy(notice);
  copy.Address(fHandlerToken, {}, nullptr);
  return core->PostCoalesced(std::move(copy));
}

status_t BMessenger::SendLater(const BMessage& message, bigtime_t timeout) const {
  return fPort != 0 ? RemoteMail::SendLater(*this, message, timeout, nullptr)
                    : SendMessage(&message, BMessenger(), timeout);
}

status_t BMessenger::SendMarked(const BMessage& message, std::shared_ptr<void> mark) const {
  if (fPort != 0) return RemoteMail::SendLater(*this, message, 0, std::move(mark));
  const auto core = token_registry::find_looper(LocalToken());
  if (!core) return B_BAD_PORT_ID;
  BMessage copy(message);
  copy.Address(fHandlerToken, {}, nullptr, std::move(mark));
  return core->Post(std::move(copy), 0);
}
