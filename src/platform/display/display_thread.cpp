#include "platform/display/display_thread.h"

#include "platform/app/nonblocking_thread.h"
#include "platform/display/display_queue.h"
#include "platform/support/log.h"

#include <QSocketNotifier>

#include <atomic>
#include <deque>
#include <exception>
#include <mutex>
#include <sys/eventfd.h>
#include <thread>
#include <vector>

namespace display {

namespace {

using TChanges = std::vector<std::function<void()>>;

/** What was posted and not yet taken by the display thread. The lock guards every field; nothing is called or
    destroyed under it. The first of a batch rings the bell. */
struct Inbox {
  std::mutex lock;
  TChanges changes;
  TChanges questions; // whose turn is first
  int bell = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  bool ended = false;
};

Inbox& inbox() {
  static Inbox* const theInbox = new Inbox; // outlives every thread that may still post
  return *theInbox;
}

std::atomic<std::thread::id> displayThread;

/** Makes the posted changes when the bell rings, one by one in their order, also from inside an event loop of Qt's own.
    Those that come meanwhile are made as well before anything is drawn, but not without an end. */
class Taker {
public:
  Taker() : fBell(inbox().bell, QSocketNotifier::Read) {
    QObject::connect(&fBell, &QSocketNotifier::activated, &fBell, [this] { MakeAll(); });
  }

private:
  static constexpr int kMostRounds = 8;

  void MakeAll() {
    for (int round = 0; round < kMostRounds; ++round) {
      TakeAll();
      AnswerQuestions();
      if (fTaken.empty()) return;
      while (!fTaken.empty()) {
        MakeFirst();
        AnswerQuestions();
      }
    }
  }

  void TakeAll() {
    eventfd_t rings = 0;
    eventfd_read(inbox().bell, &rings);
    const std::scoped_lock hold(inbox().lock);
    for (auto& change : inbox().changes) fTaken.push_back(std::move(change));
    inbox().changes.clear();
  }

  static void AnswerQuestions() {
    TChanges questions;
    {
      const std::scoped_lock hold(inbox().lock);
      questions.swap(inbox().questions);
    }
    for (const auto& question : questions) Make(question);
  }

  void MakeFirst() {
    const auto change = std::move(fTaken.front());
    fTaken.pop_front();
    Make(change);
  }

  static void Make(const std::function<void()>& change) {
    try {
      change();
    } catch (const std::exception& fault) {
      log_error("display", fault.what());
    } catch (...) {
      log_error("display", "a change threw something that is no exception");
    }
  }

  QSocketNotifier fBell;
  std::deque<std::function<void()>> fTaken;
};

} // namespace

void post(std::function<void()> change, Turn turn) {
  // A dropped change is destroyed after the lock is given up: what it holds may answer somebody.
  const std::scoped_lock hold(inbox().lock);
  if (inbox().ended) return;
  TChanges& list = turn == Turn::first ? inbox().questions : inbox().changes;
  list.push_back(std::move(change));
  if (list.size() == 1) eventfd_write(inbox().bell, 1);
}

bool is_display_thread() {
  return displayThread.load() == std::this_thread::get_id();
}

struct Queue::Impl {
  NonblockingThread neverBlocks;
  Taker taker;
};

Queue::Queue() : fImpl(std::make_unique<Impl>()) {
  displayThread = std::this_thread::get_id();
}

Queue::~Queue() {
  TChanges droppedChanges, droppedQuestions;
  {
    const std::scoped_lock hold(inbox().lock);
    inbox().ended = true;
    droppedChanges.swap(inbox().changes);
    droppedQuestions.swap(inbox().questions);
  }
  droppedChanges.clear();
  droppedQuestions.clear();
  fImpl.reset();
  displayThread = std::thread::id();
}

} // namespace display
