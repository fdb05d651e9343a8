#include "platform/app/looper_core.h"

#include "platform/app/message_body.h"
#include "platform/kernel/port_service.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

template <typename Ready>
bool wait_until_ready(std::condition_variable* changed, std::unique_lock<std::mutex>* lock, bigtime_t timeout,
                      Ready ready) {
  if (timeout == B_INFINITE_TIMEOUT) {
    changed->wait(*lock, ready);
    return true;
  }
  return changed->wait_for(*lock, std::chrono::microseconds(timeout), ready);
}

} // namespace

status_t BLooper::Core::Post(BMessage message, bigtime_t timeout) {
  // With the lock held a message is in hand only on the thread that delivers it.
  const bool isOwn = IsLockedByCaller() && (timeout != 0 || current != nullptr);
  if (isOwn) timeout = 0;
  {
    std::unique_lock lock(queueMutex);
    ++waiters;
    const bool isReady =
        wait_until_ready(&queueDrained, &lock, timeout, [this, isOwn] { return closed || HasRoomFor(isOwn); });
    --waiters;
    if (!isReady) return timeout == 0 ? B_WOULD_BLOCK : B_TIMED_OUT;
    if (closed) return B_BAD_PORT_ID;
    queue.push_back(std::move(message));
  }
  queueFilled.notify_one();
  return B_OK;
}

status_t BLooper::Core::PostCoalesced(BMessage message) {
  {
    const std::lock_guard lock(queueMutex);
    if (closed) return B_BAD_PORT_ID;
    const auto key = std::pair(message.fEnvelope->handlerToken, message.what);
    if (coalesced.contains(key)) return B_OK;
    if (!HasRoomFor(true)) return B_WOULD_BLOCK;
    queue.push_back(std::move(message));
    coalesced.insert(key);
  }
  queueFilled.notify_one();
  return B_OK;
}

bool BLooper::Core::HasRoom() {
  const std::lock_guard lock(queueMutex);
  othersWait = !closed && queue.size() >= capacity;
  return !othersWait;
}

bool BLooper::Core::TakesAnswer(uint32 code) {
  const std::lock_guard lock(queueMutex);
  return std::ranges::find(answerCodes, code) != answerCodes.end();
}

status_t BLooper::Core::Offer(BMessage* message) {
  {
    const std::lock_guard lock(queueMutex);
    if (closed) return B_BAD_PORT_ID;
    othersWait = queue.size() >= capacity;
    if (othersWait) return B_WOULD_BLOCK;
    queue.push_back(std::move(*message));
  }
  queueFilled.notify_one();
  return B_OK;
}

bool BLooper::Core::Next(BMessage* message, bool wait) {
  {
    std::unique_lock lock(queueMutex);
    if (wait) queueFilled.wait(lock, [this] { return ending || !queue.empty(); });
    if (ending || queue.empty()) return false;
    *message = std::move(queue.front());
    queue.pop_front();
    if (!coalesced.empty())
      coalesced.erase(std::pair(message->fEnvelope ? message->fEnvelope->handlerToken : 0, message->what));
    if (queue.size() >= capacity) return true; // still no room
    if (std::exchange(othersWait, false)) port_service::look_again();
    if (waiters == 0) return true;
  }
  // All of them: one that is woken may find its room taken by the next message taken out before it ran.
  queueDrained.notify_all();
  return true;
}

void BLooper::Core::Close() {
  std::deque<BMessage> dropped; // destroyed without the lock: a dropped question answers its asker
  {
    const std::lock_guard lock(queueMutex);
    closed = true;
    ending = true;
    dropped.swap(queue);
    coalesced.clear();
    if (std::exchange(othersWait, false)) port_service::look_again();
  }
  queueFilled.notify_all();
  queueDrained.notify_all();
  for (const BMessage& message : dropped) AgreeToQuit(message);
}

void BLooper::Core::AgreeToQuit(const BMessage& message) {
  if (message.what != B_QUIT_REQUESTED) return;
  BMessage agreed(B_REPLY);
  agreed.AddBool("result", true);
  message.SendReply(&agreed);
}

status_t BLooper::Core::Lock(bigtime_t timeout) {
  std::unique_lock lock(lockMutex);
  const auto self = std::this_thread::get_id();
  const auto isFree = [&] { return gone || lockDepth == 0 || lockOwner == self; };
  if (!wait_until_ready(&lockFreed, &lock, timeout, isFree)) return B_TIMED_OUT;
  if (gone) return B_BAD_VALUE;
  lockOwner = self;
  ++lockDepth;
  return B_OK;
}

void BLooper::Core::Unlock() {
  {
    const std::lock_guard lock(lockMutex);
    if (lockDepth == 0 || lockOwner != std::this_thread::get_id()) return;
    if (--lockDepth > 0) return;
    lockOwner = {};
  }
  lockFreed.notify_all();
}

bool BLooper::Core::IsLockedByCaller() {
  const std::lock_guard lock(lockMutex);
  return lockDepth > 0 && lockOwner == std::this_thread::get_id();
}

bool BLooper::Core::IsClosed() {
  const std::lock_guard lock(queueMutex);
  return closed;
}

void BLooper::Core::TakeForEver() {
  Lock(B_INFINITE_TIMEOUT);
  {
    const std::lock_guard lock(lockMutex);
    gone = true;
  }
  lockFreed.notify_all();
}

void BLooper::Core::ReleaseAll() {
  {
    const std::lock_guard lock(lockMutex);
    if (lockOwner != std::this_thread::get_id()) return;
    lockDepth = 0;
    lockOwner = {};
  }
  lockFreed.notify_all();
}
