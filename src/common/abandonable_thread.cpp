#include "common/abandonable_thread.h"

#include "platform/kernel/images.h"
#include "platform/support/log.h"

#include <pthread.h>

#include <condition_variable>
#include <exception>
#include <mutex>
#include <string>
#include <utility>

struct TAbandonableThread::TState {
  TProgress progress{0};
  std::mutex mutex; // guards hasEnded
  std::condition_variable ended;
  bool hasEnded = false;

  /** What the work owns is released before the end is announced. */
  static void Run(const std::shared_ptr<TState>& state, const std::string& name, TWork work) {
    pthread_setname_np(pthread_self(), name.c_str());
    try {
      work(&state->progress);
    } catch (const std::exception& error) {
      log_error(name, error.what());
    }
    work = nullptr;
    const std::lock_guard lock(state->mutex);
    state->hasEnded = true;
    state->ended.notify_all();
  }
};

TAbandonableThread::~TAbandonableThread() {
  if (WaitForEnd()) return;
  keep_image_mapped(reinterpret_cast<const void*>(&TState::Run)); // the abandoned thread returns into this code
  fThread.detach();
}

bool TAbandonableThread::Start(const char* name, TWork work) {
  if (!WaitForEnd()) return false;
  fHungAt = -1;
  fState = std::make_shared<TState>();
  fThread = std::thread(&TState::Run, fState, std::string(name), std::move(work));
  return true;
}

bool TAbandonableThread::WaitForEnd() {
  if (!fThread.joinable()) return true;
  std::unique_lock lock(fState->mutex);
  while (true) {
    const int64 before = fState->progress;
    const auto timeout = before == fHungAt ? std::chrono::milliseconds(0) : fTimeout;
    if (fState->ended.wait_for(lock, timeout, [this] { return fState->hasEnded; })) break;
    if (fState->progress != before) continue;
    fHungAt = before;
    return false;
  }
  lock.unlock();
  fThread.join();
  return true;
}
