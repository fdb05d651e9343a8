#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

/** What is to be done on the thread on which this was made and whose event loop runs, in order. */
class TActions : public QObject {
public:
  /** Any thread; does not wait. */
  void Do(std::function<void()> action);
  bool event(QEvent* event) override;

private:
  std::mutex fMutex; // guards the actions
  std::deque<std::function<void()>> fActions;
};
