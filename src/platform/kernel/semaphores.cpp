#include "platform/kernel/semaphores.h"

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>

namespace {

struct Semaphore {
  std::mutex mutex;
  std::condition_variable changed;
  int32 count;
  bool deleted = false;
  explicit Semaphore(int32 initial) : count(initial) {}
};

struct Table {
  std::mutex mutex;
  std::map<sem_id, std::shared_ptr<Semaphore>> semaphores;
  sem_id lastId = 0;
};

Table& table() {
  static Table* const instance = new Table;
  return *instance;
}

std::shared_ptr<Semaphore> find_semaphore(sem_id id) {
  const std::lock_guard lock(table().mutex);
  const auto found = table().semaphores.find(id);
  return found == table().semaphores.end() ? nullptr : found->second;
}

} // namespace

sem_id create_sem(int32 count, const char*) {
  if (count < 0) return B_BAD_VALUE;
  const std::lock_guard lock(table().mutex);
  table().semaphores.emplace(++table().lastId, std::make_shared<Semaphore>(count));
  return table().lastId;
}

status_t delete_sem(sem_id id) {
  const auto semaphore = find_semaphore(id);
  if (!semaphore) return B_BAD_SEM_ID;
  {
    const std::lock_guard lock(table().mutex);
    table().semaphores.erase(id);
  }
  {
    const std::lock_guard lock(semaphore->mutex);
    semaphore->deleted = true;
  }
  semaphore->changed.notify_all();
  return B_OK;
}

status_t acquire_sem(sem_id id) {
  return acquire_sem_etc(id, B_INFINITE_TIMEOUT);
}

status_t acquire_sem_etc(sem_id id, bigtime_t timeout) {
  const auto semaphore = find_semaphore(id);
  if (!semaphore) return B_BAD_SEM_ID;
  std::unique_lock lock(semaphore->mutex);
  const auto ready = [&] { return semaphore->deleted || semaphore->count > 0; };
  if (timeout == B_INFINITE_TIMEOUT) {
    semaphore->changed.wait(lock, ready);
  } else if (!semaphore->changed.wait_for(lock, std::chrono::microseconds(timeout), ready)) {
    return timeout == 0 ? B_WOULD_BLOCK : B_TIMED_OUT;
  }
  if (semaphore->deleted) return B_BAD_SEM_ID;
  --semaphore->count;
  return B_OK;
}

status_t release_sem(sem_id id) {
  const auto semaphore = find_semaphore(id);
  if (!semaphore) return B_BAD_SEM_ID;
  {
    const std::lock_guard lock(semaphore->mutex);
    ++semaphore->count;
  }
  semaphore->changed.notify_one();
  return B_OK;
}
