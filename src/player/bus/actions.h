#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

/** Task queue of the thread that creates it: runs tasks in FIFO order in that thread's event loop. */
class TActions : public QObject {
public:
  /** Thread-safe; does not wait. */
  void Do(std::function<void()> action);
  bool event(QEvent* event) override;

private:
  std::mutex fMutex; // guards fActions
  std::deque<std::function<void()>> fActions;
};
