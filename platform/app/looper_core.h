#pragma once

#include "platform/app/looper.h"
#include "platform/app/message.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
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

  status_t Post(BMessage message, bigtime_t timeout);
  /** For what another process sent: never waits; takes the message only with B_OK. After B_WOULD_BLOCK, or when there
      is no room, the ports' thread is told when it may try again. */
  status_t Offer(BMessage* message);
  bool HasRoom();
  /** Waits for a message; false when the loop is to end. */
  bool Next(BMessage* message, bool wait);
  void Close();
  status_t Lock(bigtime_t timeout);
  void Unlock();
  bool IsLockedByCaller();
  bool IsClosed();
  /** Waits for the lock and turns everyone else away: what follows is the looper's end. */
  void TakeForEver();
  /** Gives the caller's lock up however often it was taken. */
  void ReleaseAll();
};

/** Every living looper and attached handler by token; tokens are never used twice. */
namespace token_registry {
uint64 new_token();
void add_looper(const std::shared_ptr<BLooper::Core>& core);
void remove_looper(uint64 token);
std::shared_ptr<BLooper::Core> find_looper(uint64 token);
std::vector<std::shared_ptr<BLooper::Core>> all_loopers();
} // namespace token_registry
