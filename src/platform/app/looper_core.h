#pragma once

#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "platform/kernel/bounded_queue.h"

#include <atomic>
#include <cassert>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

class BWindow;

/** Implementation of a looper, private to the messaging. Outlives the looper: a holder can still find out that the
    looper is gone. */
struct BLooper::Core {
  Core(BLooper* owner, size_t capacity, int32 threadPriority);

  BoundedQueue<BMessage> queue;
  const int32 priority;
  const uint64 token;
  BLooper* const looper;
  /** 0 before the looper runs. */
  std::atomic<thread_id> thread{0};
  /** Set by a window, for as long as it can be used. */
  std::atomic<BWindow*> window{nullptr};

  std::mutex mutex; // guards answerCodes and the looper's lock: lockOwner, lockDepth, gone
  std::vector<uint32> answerCodes{B_REPLY, B_MESSAGE_NOT_UNDERSTOOD};
  /** The lock is recursive, by thread. */
  std::condition_variable lockFreed;
  std::thread::id lockOwner;
  int32 lockDepth = 0;
  bool gone = false; // set before the looper is destroyed: nobody gets the lock any more

  // Guarded by the looper's lock.
  std::vector<BHandler*> handlers;
  std::vector<BMessageFilter*> filters;
  BMessage* current = nullptr; // only used on the looper's thread

  /** How far beyond its capacity a queue takes what must not wait for room. */
  static constexpr size_t kReserve = 10000;

  /** Waits for room, unless the caller has the looper locked: nobody could make room meanwhile. What a handler posts to
      its own looper, and what would wait, is then taken beyond the capacity, up to the reserve. */
  status_t Post(BMessage message, bigtime_t timeout);
  /** Coalesces: B_OK without another message while a coalesced one with its code and handler is queued. Does not wait;
      taken beyond the capacity. */
  status_t PostCoalesced(BMessage message);
  bool TakesAnswer(uint32 code);
  /** Answers a B_QUIT_REQUESTED whose looper is ending anyway; ignores other messages. */
  static void AgreeToQuit(const BMessage& message);
  /** Ends the loop after the current message. */
  void Close();
  [[nodiscard]] status_t Lock(bigtime_t timeout);
  void Unlock();
  bool IsLockedByCaller();
  /** Debug builds check that the caller has the looper locked, or that it does not run. */
  void AssertLocked() { assert(thread == 0 || IsLockedByCaller()); }
  /** Takes the lock for the last time; every later attempt fails. Called just before destruction. */
  void TakeForEver();
  /** Gives the caller's lock up however often it was taken. */
  void ReleaseAll();

private:
  bool IsFreeFor(std::thread::id caller) const { return lockDepth == 0 || lockOwner == caller; }
};

/** Every living looper by token; tokens, which handlers have too, are never reused. Thread-safe. */
namespace token_registry {
uint64 new_token();
void add_looper(const std::shared_ptr<BLooper::Core>& core);
void remove_looper(uint64 token);
std::shared_ptr<BLooper::Core> find_looper(uint64 token);
std::vector<std::shared_ptr<BLooper::Core>> all_loopers();
} // namespace token_registry
