#include "platform/app/outbox.h"

#include "platform/kernel/threads.h"
#include "platform/support/log.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace outbox {

namespace {

constexpr size_t kMaxQueued = 100;      // per destination
constexpr size_t kMaxDestinations = 16; // each has a thread while it has letters
/** How long an idle thread waits for the next letter before it ends. */
constexpr std::chrono::seconds kIdle{2};

using Send = std::function<status_t()>;

struct Destination {
  std::string name;
  std::deque<Send> queue;
};

struct Table {
  std::mutex mutex; // guards destinations and their queues
  std::condition_variable posted;
  std::map<std::string, std::shared_ptr<Destination>> destinations;
};

/** Never destroyed: its threads may outlive main. */
Table& table() {
  static Table* const instance = new Table;
  return *instance;
}

status_t run(const Send& send) {
  try {
    return send();
  } catch (const std::exception& error) {
    log_error("a letter to another program", error.what());
    return B_NO_MEMORY;
  }
}

/** The next letter; empty, and the destination removed, when none has come for a while. */
Send next_of(Destination* destination) {
  std::unique_lock lock(table().mutex);
  if (!table().posted.wait_for(lock, kIdle, [&] { return !destination->queue.empty(); })) {
    table().destinations.erase(destination->name);
    return {};
  }
  Send next = std::move(destination->queue.front());
  destination->queue.pop_front();
  return next;
}

void drop_all(Destination* destination) {
  std::deque<Send> dropped; // destroyed without the lock
  const std::lock_guard lock(table().mutex);
  dropped.swap(destination->queue);
}

int32 serve(void* argument) {
  const std::unique_ptr<std::shared_ptr<Destination>> held(static_cast<std::shared_ptr<Destination>*>(argument));
  Destination* const destination = held->get();
  while (const Send send = next_of(destination))
    if (run(send) == B_TIMED_OUT) drop_all(destination);
  return B_OK;
}

/** With the table locked. */
status_t start(const std::shared_ptr<Destination>& destination) {
  auto held = std::make_unique<std::shared_ptr<Destination>>(destination);
  const status_t status = resume_thread(spawn_thread(serve, "outbox", B_NORMAL_PRIORITY, held.get()));
  if (status == B_OK) static_cast<void>(held.release()); // the thread owns it
  return status;
}

} // namespace

status_t post(const std::string& name, Send send) {
  {
    const std::lock_guard lock(table().mutex);
    auto& destinations = table().destinations;
    const auto found = destinations.find(name);
    if (found != destinations.end()) {
      if (found->second->queue.size() >= kMaxQueued) return B_WOULD_BLOCK;
      found->second->queue.push_back(std::move(send));
    } else {
      if (destinations.size() >= kMaxDestinations) return B_WOULD_BLOCK;
      const auto made = std::make_shared<Destination>(Destination{name, {}});
      made->queue.push_back(std::move(send));
      if (const status_t status = start(made); status != B_OK) return status;
      destinations.emplace(name, made);
    }
  }
  table().posted.notify_all();
  return B_OK;
}

} // namespace outbox
