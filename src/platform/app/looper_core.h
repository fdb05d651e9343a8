#pragma once

#include "platform/app/looper.h"
#include "platform/app/message.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

class BWindow;

/** The innards of a looper, shared by the files that implement the messaging; not for anyone else.
    Outlives the looper: whoever holds it may still ask whether the looper is there. */
struct BLooper::Core {
  explicit Core(BLooper* owner) : looper(owner) {}

  // The queue.
  std::mutex queueMutex;
  std::condition_variable queueFilled;
  std::condition_variable queueDrained;
  std::deque<BMessage> queue;
  size_t capacity = 0;
  int32 priority = 0;
  bool closed = false;     // no more posts
  bool ending = false;     // the loop stops after the message in hand
  bool othersWait = false; // another process wants to be told of room
  int32 waiters = 0;       // threads that wait for room
  /** Handler and code of the messages of which the queue holds one at most. */
  std::set<std::pair<uint64, uint32>> coalesced;
  /** Guarded by queueMutex, too. */
  std::vector<uint32> answerCodes{B_REPLY, B_MESSAGE_NOT_UNDERSTOOD};

  // The lock of the looper: recursive, by thread.
  std::mutex lockMutex;
  std::condition_variable lockFreed;
  std::thread::id lockOwner;
  int32 lockDepth = 0;
  bool gone = false; // set before the looper is destroyed: nobody gets the lock any more

  std::atomic<thread_id> thread{0};
  /** Set by a window, for as long as it can be used. */
  std::atomic<BWindow*> window{nullptr};
  uint64 token = 0;
  BLooper* const looper;
  // With the looper locked, or on its own thread.
  std::vector<BHandler*> handlers;
  std::vector<BMessageFilter*> filters;
  BHandler* preferred = nullptr;
  BMessage* current = nullptr;

  /** How far beyond its capacity a queue takes what must not wait for room. */
  static constexpr size_t kReserve = 10000;

  /** Waits for room, unless the caller has the looper locked: nobody could make room meanwhile. What a handler posts to
      its own looper, and what would wait, is then taken beyond the capacity, up to the reserve. */
  status_t Post(BMessage message, bigtime_t timeout);
  /** Coalesces: B_OK without another message while one with its code and handler is queued. Never waits; taken beyond
      the capacity. */
  status_t PostCoalesced(BMessage message);
  /** For what another process sent: never waits; takes the message only with B_OK. After B_WOULD_BLOCK, or when there
      is no room, the ports' thread is told when it may try again. */
  status_t Offer(BMessage* message);
  bool HasRoom();
  bool TakesAnswer(uint32 code);
  /** Waits for a message; false when the loop is to end. */
  bool Next(BMessage* message, bool wait);
  /** Answers a request to quit whose looper is ending anyway; other messages are left alone. */
  static void AgreeToQuit(const BMessage& message);
  void Close();
  status_t Lock(bigtime_t timeout);
  void Unlock();
  bool IsLockedByCaller();
  bool IsClosed();
  /** Waits for the lock and turns everyone else away: what follows is the looper's end. */
  void TakeForEver();
  /** Gives the caller's lock up however often it was taken. */
  void ReleaseAll();

private:
  bool HasRoomFor(bool beyondCapacity) const { return queue.size() < capacity + (beyondCapacity ? kReserve : 0); }
};

/** Every living looper and attached handler by token; tokens are never used twice. */
namespace token_registry {
uint64 new_token();
void add_looper(const std::shared_ptr<BLooper::Core>& core);
void remove_looper(uint64 token);
std::shared_ptr<BLooper::Core> find_looper(uint64 token);
std::vector<std::shared_ptr<BLooper::Core>> all_loopers();
} // namespace token_registry
