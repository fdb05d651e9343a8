#include "platform/kernel/semaphores.h"

#include "platform/kernel/id_table.h"
#include "platform/kernel/timed_wait.h"

namespace {

struct Semaphore {
  explicit Semaphore(int32 initial) : count(initial) {}
  std::mutex mutex; // guards count, isDeleted
  std::condition_variable changed;
  int32 count;
  bool isDeleted = false;
};

/** Never destroyed: threads may outlive main. */
IdTable<Semaphore>& semaphores() {
  static auto* const instance = new IdTable<Semaphore>;
  return *instance;
}

} // namespace

sem_id create_sem(int32 count, const char*) {
  return count < 0 ? B_BAD_VALUE : semaphores().Add(std::make_shared<Semaphore>(count));
}

status_t delete_sem(sem_id id) {
  const auto semaphore = semaphores().Remove(id);
  if (!semaphore) return B_BAD_SEM_ID;
  {
    const std::lock_guard lock(semaphore->mutex);
    semaphore->isDeleted = true;
  }
  semaphore->changed.notify_all();
  return B_OK;
}

status_t acquire_sem(sem_id id) {
  return acquire_sem_etc(id, B_INFINITE_TIMEOUT);
}

status_t acquire_sem_etc(sem_id id, bigtime_t timeout) {
  const auto semaphore = semaphores().Get(id);
  if (!semaphore) return B_BAD_SEM_ID;
  std::unique_lock lock(semaphore->mutex);
  const status_t status = wait_until_ready(&semaphore->changed, &lock, timeout,
                                           [&] { return semaphore->isDeleted || semaphore->count > 0; });
  if (semaphore->isDeleted) return B_BAD_SEM_ID;
  if (status == B_OK) --semaphore->count;
  return status;
}

status_t release_sem(sem_id id) {
  const auto semaphore = semaphores().Get(id);
  if (!semaphore) return B_BAD_SEM_ID;
  {
    const std::lock_guard lock(semaphore->mutex);
    ++semaphore->count;
  }
  semaphore->changed.notify_one();
  return B_OK;
}
