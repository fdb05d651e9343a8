#include "platform/kernel/threads.h"

#include "platform/support/log.h"

#include <pthread.h>
#include <time.h>

#include <chrono>
#include <condition_variable>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace {

struct Thread {
  thread_id id = 0;
  std::string name;
  int32 priority = B_NORMAL_PRIORITY;
  thread_func entry = nullptr;
  void* argument = nullptr;
  bool started = false;
  bool finished = false;
  int32 result = 0;
};

/** Every spawned thread, and every other that asked for its own id, until it has ended. The mutex guards the records,
    too. Never destroyed: threads may outlive main. */
struct Table {
  std::mutex mutex;
  std::condition_variable changed;
  std::map<thread_id, std::shared_ptr<Thread>> threads;
  thread_id lastId = 0;
};

Table& table() {
  static Table* const instance = new Table;
  return *instance;
}

std::shared_ptr<Thread> add_thread(const char* name, int32 priority) {
  auto thread = std::make_shared<Thread>();
  thread->name = name ? name : "";
  thread->priority = priority;
  const std::lock_guard lock(table().mutex);
  thread->id = ++table().lastId;
  table().threads.emplace(thread->id, thread);
  return thread;
}

void finish(Thread* thread, int32 result) {
  {
    const std::lock_guard lock(table().mutex);
    thread->result = result;
    thread->finished = true;
    table().threads.erase(thread->id);
  }
  table().changed.notify_all();
}

/** The calling thread's record; removed when the thread ends. */
struct Self {
  std::shared_ptr<Thread> thread;
  bool adopted = false;
  ~Self() {
    if (adopted) finish(thread.get(), 0);
  }
};
thread_local Self tSelf;

thread_id own_id() {
  if (!tSelf.thread) {
    char name[16] = "";
    pthread_getname_np(pthread_self(), name, sizeof name);
    tSelf.thread = add_thread(name, B_NORMAL_PRIORITY);
    tSelf.thread->started = true;
    tSelf.adopted = true;
  }
  return tSelf.thread->id;
}

std::shared_ptr<Thread> find_record(thread_id id) {
  const auto found = table().threads.find(id);
  return found == table().threads.end() ? nullptr : found->second;
}

/** By value: another thread may rename it at any time. */
std::string name_of(const Thread& thread) {
  const std::lock_guard lock(table().mutex);
  return thread.name;
}

/** An exception ends only the thread. */
int32 run_entry(const Thread& thread) {
  try {
    pthread_setname_np(pthread_self(), name_of(thread).substr(0, 15).c_str());
    return thread.entry(thread.argument);
  } catch (const std::exception& error) {
    log_error("a thread ended by an exception", error.what());
  } catch (...) {
    log_error("a thread ended by an exception", "of an unknown type");
  }
  return B_ERROR;
}

void* thread_main(void* argument) {
  const std::unique_ptr<std::shared_ptr<Thread>> held(static_cast<std::shared_ptr<Thread>*>(argument));
  tSelf.thread = *held;
  finish(tSelf.thread.get(), run_entry(*tSelf.thread));
  return nullptr;
}

} // namespace

thread_id spawn_thread(thread_func entry, const char* name, int32 priority, void* argument) {
  const auto thread = add_thread(name, priority);
  thread->entry = entry;
  thread->argument = argument;
  return thread->id;
}

status_t resume_thread(thread_id id) {
  std::shared_ptr<Thread> thread;
  {
    const std::lock_guard lock(table().mutex);
    thread = find_record(id);
    if (!thread || thread->started) return B_BAD_THREAD_ID;
    thread->started = true;
  }
  auto held = std::make_unique<std::shared_ptr<Thread>>(thread);
  pthread_t handle;
  if (pthread_create(&handle, nullptr, thread_main, held.get()) != 0) {
    finish(thread.get(), B_NO_MEMORY);
    return B_NO_MEMORY;
  }
  static_cast<void>(held.release()); // the thread owns it
  pthread_detach(handle);
  return B_OK;
}

status_t wait_for_thread(thread_id id, int32* result) {
  std::unique_lock lock(table().mutex);
  const std::shared_ptr<Thread> thread = find_record(id);
  if (!thread) return B_BAD_THREAD_ID;
  table().changed.wait(lock, [&] { return thread->finished; });
  if (result) *result = thread->result;
  return B_OK;
}

thread_id find_thread(const char* name) {
  if (name == nullptr) return own_id();
  const std::lock_guard lock(table().mutex);
  for (const auto& [id, thread] : table().threads) {
    if (thread->name == name) return id;
  }
  return B_NAME_NOT_FOUND;
}

status_t rename_thread(thread_id id, const char* name) {
  const std::lock_guard lock(table().mutex);
  const auto thread = find_record(id);
  if (!thread) return B_BAD_THREAD_ID;
  thread->name = name;
  return B_OK;
}

status_t set_thread_priority(thread_id id, int32 priority) {
  const std::lock_guard lock(table().mutex);
  const auto thread = find_record(id);
  if (!thread) return B_BAD_THREAD_ID;
  thread->priority = priority;
  return B_OK;
}

int32 get_thread_priority(thread_id id) {
  const std::lock_guard lock(table().mutex);
  const auto thread = find_record(id);
  return thread ? thread->priority : static_cast<int32>(B_BAD_THREAD_ID);
}

status_t snooze(bigtime_t microseconds) {
  if (microseconds > 0) std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
  return B_OK;
}

bigtime_t system_time() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<bigtime_t>(now.tv_sec) * 1000000 + now.tv_nsec / 1000;
}
