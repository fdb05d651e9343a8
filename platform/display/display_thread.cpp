#include "platform/display/display_thread.h"

#include "platform/display/display_queue.h"
#include "platform/support/log.h"

#include <QCoreApplication>
#include <QEvent>

#include <atomic>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace display {

namespace {

/** What was posted and not yet taken by the display thread. The lock guards every field; nothing is called or
    destroyed under it but Qt's own posting. */
struct Inbox {
  std::mutex lock;
  std::vector<std::function<void()>> changes;
  QObject* taker = nullptr;
  bool ended = false;
};

Inbox& inbox() {
  static Inbox* const theInbox = new Inbox; // outlives every thread that may still post
  return *theInbox;
}

std::atomic<std::thread::id> displayThread;

/** Takes the posted changes and makes them, one by one in their order, also from inside an event loop of Qt's own. */
class Taker : public QObject {
public:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::User) return QObject::event(event);
    TakeAll();
    while (!fTaken.empty()) MakeFirst();
    return true;
  }

private:
  void TakeAll() {
    const std::scoped_lock hold(inbox().lock);
    for (auto& change : inbox().changes) fTaken.push_back(std::move(change));
    inbox().changes.clear();
  }

  void MakeFirst() {
    const auto change = std::move(fTaken.front());
    fTaken.pop_front();
    try {
      change();
    } catch (const std::exception& fault) {
      log_error("display", fault.what());
    }
  }

  std::deque<std::function<void()>> fTaken;
};

} // namespace

void post(std::function<void()> change) {
  // A dropped change is destroyed after the lock is given up: what it holds may answer somebody.
  const std::scoped_lock hold(inbox().lock);
  if (inbox().ended) return;
  inbox().changes.push_back(std::move(change));
  if (inbox().changes.size() == 1 && inbox().taker)
    QCoreApplication::postEvent(inbox().taker, new QEvent(QEvent::User));
}

bool is_display_thread() {
  return displayThread.load() == std::this_thread::get_id();
}

bool is_running() {
  return displayThread.load() != std::thread::id();
}

struct Queue::Impl {
  Taker taker;
};

Queue::Queue() : fImpl(std::make_unique<Impl>()) {
  displayThread = std::this_thread::get_id();
  const std::scoped_lock hold(inbox().lock);
  inbox().taker = &fImpl->taker;
  QCoreApplication::postEvent(inbox().taker, new QEvent(QEvent::User));
}

Queue::~Queue() {
  std::vector<std::function<void()>> dropped;
  {
    const std::scoped_lock hold(inbox().lock);
    inbox().ended = true;
    inbox().taker = nullptr;
    dropped.swap(inbox().changes);
  }
  dropped.clear();
  fImpl.reset();
  displayThread = std::thread::id();
}

} // namespace display
