#pragma once

#include "platform/kernel/port_service.h"
#include "platform/kernel/timed_wait.h"

#include <deque>
#include <utility>

/** A bounded FIFO of messages, which reports room: to threads that wait for it, and to the ports' service. Every call
    fails with B_BAD_PORT_ID once the queue is closed. Thread-safe; no item is destroyed with the mutex locked. */
template <typename Item>
class BoundedQueue {
public:
  explicit BoundedQueue(size_t capacity) : fCapacity(capacity) {}

  /** Waits for room; `reserve` is added to the capacity. */
  [[nodiscard]] status_t Push(Item item, bigtime_t timeout, size_t reserve = 0) {
    {
      std::unique_lock lock(fMutex);
      ++fWaitingWriters;
      const status_t status =
          wait_until_ready(&fDrained, &lock, timeout, [&] { return fClosed || fItems.size() < fCapacity + reserve; });
      --fWaitingWriters;
      if (fClosed) return B_BAD_PORT_ID;
      if (status != B_OK) return status;
      fItems.push_back(std::move(item));
    }
    fFilled.notify_all();
    return B_OK;
  }

  /** Coalesces: B_OK without adding the item while `isSame` holds for one that is queued. Does not wait. */
  template <typename IsSame>
  [[nodiscard]] status_t PushUnlessQueued(Item item, size_t reserve, IsSame isSame) {
    {
      const std::lock_guard lock(fMutex);
      if (fClosed) return B_BAD_PORT_ID;
      if (std::ranges::any_of(fItems, isSame)) return B_OK;
      if (fItems.size() >= fCapacity + reserve) return B_WOULD_BLOCK;
      fItems.push_back(std::move(item));
    }
    fFilled.notify_all();
    return B_OK;
  }

  /** For the ports' service, does not wait. Adds what `makeItem` returns, which is called only when there is room.
     After B_WOULD_BLOCK the service is woken when there is. */
  template <typename MakeItem>
  [[nodiscard]] status_t Offer(MakeItem makeItem) {
    {
      const std::lock_guard lock(fMutex);
      if (!HasRoomForService()) return fClosed ? B_BAD_PORT_ID : B_WOULD_BLOCK;
      fItems.push_back(makeItem());
    }
    fFilled.notify_all();
    return B_OK;
  }

  /** What `Offer` would give. False: the service is woken when there is room. */
  [[nodiscard]] bool HasRoom() {
    const std::lock_guard lock(fMutex);
    return fClosed || HasRoomForService();
  }

  /** Waits for an item. */
  [[nodiscard]] status_t Pop(Item* item, bigtime_t timeout) {
    bool writersWait = false;
    {
      std::unique_lock lock(fMutex);
      if (const status_t status = AwaitItem(&lock, timeout); status != B_OK) return status;
      *item = std::move(fItems.front());
      fItems.pop_front();
      if (fItems.size() >= fCapacity) return B_OK; // the reserve is in use: still no room
      if (std::exchange(fServiceWaits, false)) port_service::look_again();
      writersWait = fWaitingWriters > 0;
    }
    // All of them: the one that is woken may find its room used up by a post that came first.
    if (writersWait) fDrained.notify_all();
    return B_OK;
  }

  /** Waits for an item and shows it to `look`, with the mutex locked; it stays in the queue. */
  template <typename Look>
  [[nodiscard]] status_t Peek(Look look) {
    std::unique_lock lock(fMutex);
    const status_t status = AwaitItem(&lock, B_INFINITE_TIMEOUT);
    if (status == B_OK) look(fItems.front());
    return status;
  }

  /** Wakes everyone who waits; returns what was queued. */
  std::deque<Item> Close() {
    std::deque<Item> dropped;
    {
      const std::lock_guard lock(fMutex);
      fClosed = true;
      dropped.swap(fItems);
      if (std::exchange(fServiceWaits, false)) port_service::look_again();
    }
    fFilled.notify_all();
    fDrained.notify_all();
    return dropped;
  }

  bool IsClosed() const {
    const std::lock_guard lock(fMutex);
    return fClosed;
  }
  size_t Count() const {
    const std::lock_guard lock(fMutex);
    return fItems.size();
  }

private:
  status_t AwaitItem(std::unique_lock<std::mutex>* lock, bigtime_t timeout) {
    const status_t status = wait_until_ready(&fFilled, lock, timeout, [&] { return fClosed || !fItems.empty(); });
    return fClosed ? B_BAD_PORT_ID : status;
  }
  bool HasRoomForService() {
    fServiceWaits = !fClosed && fItems.size() >= fCapacity;
    return !fClosed && !fServiceWaits;
  }

  const size_t fCapacity;
  mutable std::mutex fMutex; // guards all below
  std::condition_variable fFilled;
  std::condition_variable fDrained;
  std::deque<Item> fItems;
  int fWaitingWriters = 0;
  bool fServiceWaits = false;
  bool fClosed = false;
};
