#include "platform/app/message_runner.h"

#include "platform/app/looper_core.h"
#include "platform/app/message.h"
#include "platform/support/log.h"

#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

using Clock = std::chrono::steady_clock;

/** One runner's schedule. Target and message never change; the timer's mutex guards the other fields. */
struct BMessageRunner::Beat {
  BMessenger target;
  BMessage message;
  std::chrono::microseconds interval{};
  int32 left = -1;
  Clock::time_point next;
  bool isBeingSent = false;
  /** Expires when the last beat has been handled or dropped: the message owns the object. */
  std::weak_ptr<void> pending;
};

namespace {

constexpr bigtime_t kShortestInterval = 1000;
/** A day, so that a huge interval cannot overflow and fire at once. */
constexpr bigtime_t kLongestInterval = 86400000000;

std::chrono::microseconds bounded(bigtime_t interval) {
  return std::chrono::microseconds(std::clamp(interval, kShortestInterval, kLongestInterval));
}

/** The thread that sleeps until the next beat of any runner. Started by the first runner, never ended: it only uses
   code and data of this library. */
class Timer {
public:
  using Beat = std::shared_ptr<BMessageRunner::Beat>;

  static Timer& Instance() {
    static Timer* const instance = new Timer;
    return *instance;
  }

  void Add(const Beat& beat) {
    const std::lock_guard lock(fMutex);
    beat->next = Clock::now() + beat->interval;
    fBeats.push_back(beat);
    fChanged.notify_all();
  }

  /** Waits for a message that is just being posted: nothing is sent once this has returned. */
  void Remove(const Beat& beat) {
    std::unique_lock lock(fMutex);
    std::erase(fBeats, beat);
    fSent.wait(lock, [&] { return !beat->isBeingSent; });
  }

  template <typename Change>
  void Alter(const Beat& beat, Change change) {
    const std::lock_guard lock(fMutex);
    change(beat.get());
    beat->next = Clock::now() + beat->interval;
    fChanged.notify_all();
  }

private:
  Timer() { std::thread(&Timer::Loop, this).detach(); }

  [[noreturn]] void Loop() {
    pthread_setname_np(pthread_self(), "message runner");
    std::unique_lock lock(fMutex); // released while a beat is posted
    for (;;) {
      while (SendDue(&lock)) {
      }
      const auto soonest = std::min_element(fBeats.begin(), fBeats.end(),
                                            [](const Beat& a, const Beat& b) { return a->next < b->next; });
      if (soonest == fBeats.end()) {
        fChanged.wait(lock);
      } else {
        const Clock::time_point next = (*soonest)->next;
        fChanged.wait_until(lock, next);
      }
    }
  }

  /** Posts one beat that is due, with the mutex released meanwhile; posting neither blocks nor calls out. False when
      none is due. */
  bool SendDue(std::unique_lock<std::mutex>* lock) {
    const Clock::time_point now = Clock::now();
    const auto due = std::ranges::find_if(fBeats, [now](const Beat& beat) { return beat->next <= now; });
    if (due == fBeats.end()) return false;
    const Beat beat = *due;
    beat->next = std::max(beat->next + beat->interval, now);
    if (beat->left == 0 || !beat->pending.expired()) return true;
    if (beat->left > 0) --beat->left;
    beat->isBeingSent = true;
    lock->unlock();
    Post(beat.get());
    lock->lock();
    beat->isBeingSent = false;
    fSent.notify_all();
    return true;
  }

  static void Post(BMessageRunner::Beat* beat) {
    try {
      const auto mark = std::make_shared<char>();
      beat->pending = mark;
      beat->target.SendMarked(beat->message, mark);
    } catch (const std::exception& error) {
      log_error("message runner", error.what());
    }
  }

  std::mutex fMutex; // guards fBeats and the beats
  std::condition_variable fChanged;
  std::condition_variable fSent;
  std::vector<Beat> fBeats;
};

} // namespace

BMessageRunner::BMessageRunner(const BMessenger& target, const BMessage* message, bigtime_t interval, int32 count)
    : fBeat(std::make_shared<Beat>()) {
  fBeat->target = target;
  fBeat->message = *message;
  fBeat->interval = bounded(interval);
  fBeat->left = count;
  Timer::Instance().Add(fBeat);
}

BMessageRunner::~BMessageRunner() {
  Timer::Instance().Remove(fBeat);
}

status_t BMessageRunner::SetInterval(bigtime_t interval) {
  Timer::Instance().Alter(fBeat, [interval](Beat* beat) { beat->interval = bounded(interval); });
  return B_OK;
}
