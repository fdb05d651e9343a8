#include "platform/app/looper_core.h"

#include "platform/app/message_body.h"

#include <algorithm>
#include <utility>

BLooper::Core::Core(BLooper* owner, size_t capacity, int32 threadPriority)
    : queue(capacity), priority(threadPriority), token(token_registry::new_token()), looper(owner) {}

status_t BLooper::Core::Post(BMessage message, bigtime_t timeout) {
  // With the lock held a message is being handled only on the thread that delivers it.
  const bool isOwn = IsLockedByCaller() && (timeout != 0 || current != nullptr);
  return queue.Push(std::move(message), isOwn ? 0 : timeout, isOwn ? kReserve : 0);
}

status_t BLooper::Core::PostCoalesced(BMessage message) {
  message.fEnvelope->coalesced = true;
  const auto isSame = [what = message.what, handler = message.fEnvelope->handlerToken](const BMessage& queued) {
    const auto& envelope = queued.fEnvelope;
    return queued.what == what && envelope && envelope->coalesced && envelope->handlerToken == handler;
  };
  return queue.PushUnlessQueued(std::move(message), kReserve, isSame);
}

bool BLooper::Core::TakesAnswer(uint32 code) {
  const std::lock_guard lock(mutex);
  return std::ranges::find(answerCodes, code) != answerCodes.end();
}

void BLooper::Core::Close() {
  // The dropped questions release their askers as they are destroyed.
  for (const BMessage& message : queue.Close()) AgreeToQuit(message);
}

void BLooper::Core::AgreeToQuit(const BMessage& message) {
  if (message.what != B_QUIT_REQUESTED) return;
  BMessage agreed(B_REPLY);
  agreed.AddBool("result", true);
  message.SendReply(&agreed);
}

status_t BLooper::Core::Lock(bigtime_t timeout) {
  std::unique_lock lock(mutex);
  const auto caller = std::this_thread::get_id();
  if (wait_until_ready(&lockFreed, &lock, timeout, [&] { return gone || IsFreeFor(caller); }) != B_OK)
    return B_TIMED_OUT;
  if (gone) return B_BAD_VALUE;
  lockOwner = caller;
  ++lockDepth;
  return B_OK;
}

void BLooper::Core::Unlock() {
  {
    const std::lock_guard lock(mutex);
    if (lockDepth == 0 || lockOwner != std::this_thread::get_id()) return;
    if (--lockDepth > 0) return;
    lockOwner = {};
  }
  lockFreed.notify_all();
}

bool BLooper::Core::IsLockedByCaller() {
  const std::lock_guard lock(mutex);
  return lockDepth > 0 && lockOwner == std::this_thread::get_id();
}

void BLooper::Core::TakeForEver() {
  {
    std::unique_lock lock(mutex);
    const auto caller = std::this_thread::get_id();
    lockFreed.wait(lock, [&] { return IsFreeFor(caller); });
    lockOwner = caller;
    ++lockDepth;
    gone = true;
  }
  lockFreed.notify_all();
}

void BLooper::Core::ReleaseAll() {
  {
    const std::lock_guard lock(mutex);
    if (lockOwner != std::this_thread::get_id()) return;
    lockDepth = 0;
    lockOwner = {};
  }
  lockFreed.notify_all();
}
