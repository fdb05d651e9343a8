#include "platform/display/display_thread.h"

#include "platform/app/nonblocking_thread.h"
#include "platform/display/display_queue.h"
#include "platform/kernel/wakeup_fd.h"
#include "platform/support/log.h"

#include <QSocketNotifier>

#include <atomic>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace display {

namespace {

using TTasks = std::vector<std::function<void()>>;

/** Tasks posted and not yet taken by the display thread. `lock` guards all fields; no task is called or destroyed with
    it held. The first of a batch wakes the display thread. */
struct Inbox {
  std::mutex lock;
  TTasks tasks;
  TTasks questions; // with Turn::first
  WakeupFd wakeUp;
  bool ended = false;
};

Inbox& inbox() {
  static Inbox* const theInbox = new Inbox; // outlives every thread that may still post
  return *theInbox;
}

std::atomic<std::thread::id> displayThread;

/** Runs queued tasks in FIFO order when the thread is woken, also inside Qt's nested event loops. Tasks posted
   meanwhile run before the next repaint, at most kMostRounds times, so that painting is not starved. */
class TaskRunner {
public:
  TaskRunner() : fWakeUp(inbox().wakeUp.Get(), QSocketNotifier::Read) {
    QObject::connect(&fWakeUp, &QSocketNotifier::activated, &fWakeUp, [this] { RunAll(); });
  }

private:
  static constexpr int kMostRounds = 8;

  void RunAll() {
    for (int round = 0; round < kMostRounds; ++round) {
      TakeAll();
      AnswerQuestions();
      if (fTaken.empty()) return;
      while (!fTaken.empty()) {
        RunFirst();
        AnswerQuestions();
      }
    }
  }

  void TakeAll() {
    inbox().wakeUp.Clear();
    const std::scoped_lock hold(inbox().lock);
    for (auto& task : inbox().tasks) fTaken.push_back(std::move(task));
    inbox().tasks.clear();
  }

  static void AnswerQuestions() {
    TTasks questions;
    {
      const std::scoped_lock hold(inbox().lock);
      questions.swap(inbox().questions);
    }
    for (const auto& question : questions) Run(question);
  }

  void RunFirst() {
    const auto task = std::move(fTaken.front());
    fTaken.pop_front();
    Run(task);
  }

  static void Run(const std::function<void()>& task) {
    try {
      task();
    } catch (const std::exception& error) {
      log_error("display", error.what());
    } catch (...) {
      log_error("display", "a task threw something other than an exception");
    }
  }

  QSocketNotifier fWakeUp;
  std::deque<std::function<void()>> fTaken;
};

} // namespace

void post(std::function<void()> task, Turn turn) {
  // A dropped task is destroyed after the lock is released: destroying an Answer wakes its waiter.
  const std::scoped_lock hold(inbox().lock);
  if (inbox().ended) return;
  TTasks& list = turn == Turn::first ? inbox().questions : inbox().tasks;
  list.push_back(std::move(task));
  if (list.size() == 1) inbox().wakeUp.Wake();
}

bool is_display_thread() {
  return displayThread.load() == std::this_thread::get_id();
}

struct Queue::Impl {
  NonblockingThread neverBlocks;
  TaskRunner runner;
};

Queue::Queue() : fImpl(std::make_unique<Impl>()) {
  displayThread = std::this_thread::get_id();
}

Queue::~Queue() {
  TTasks droppedTasks, droppedQuestions;
  {
    const std::scoped_lock hold(inbox().lock);
    inbox().ended = true;
    droppedTasks.swap(inbox().tasks);
    droppedQuestions.swap(inbox().questions);
  }
  droppedTasks.clear();
  droppedQuestions.clear();
  fImpl.reset();
  displayThread = std::thread::id();
}

} // namespace display
