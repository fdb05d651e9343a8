#pragma once

#include <cassert>
#include <functional>
#include <future>
#include <memory>
#include <utility>

namespace display {

/** `first`: ahead of the queued tasks, for a question whose answer does not depend on them. */
enum class Turn { inOrder, first };

/** Queues a task for the display thread, FIFO per turn. Thread-safe, never blocks. Tasks posted before the display runs
    are kept until it does; those posted after its end are dropped. */
void post(std::function<void()> task, Turn turn = Turn::inOrder);

bool is_display_thread();
/** Checked in debug builds. */
inline void assert_on_display_thread() {
  assert(is_display_thread());
}

/** A value that only the display thread may read or change; checked in debug builds. */
template <class T>
class DisplayThreadOnly {
public:
  T& operator*() {
    assert_on_display_thread();
    return fValue;
  }
  T* operator->() { return &**this; }

private:
  T fValue{};
};

/** A promise with a default: destroyed unanswered, it gives the waiter the default value. */
template <class T>
class Answer {
public:
  explicit Answer(T otherwise) : fOtherwise(std::move(otherwise)) {}
  Answer(const Answer&) = delete;
  Answer& operator=(const Answer&) = delete;
  ~Answer() { Give(std::move(fOtherwise)); }

  std::future<T> Waiter() { return fPromise.get_future(); }
  /** Only the first call counts. Not thread-safe: display thread. */
  void Give(T value) {
    if (fGiven) return;
    fGiven = true;
    fPromise.set_value(std::move(value));
  }

private:
  T fOtherwise;
  bool fGiven = false;
  std::promise<T> fPromise;
};

/** Runs `question` on the display thread and blocks until it returns; gives `otherwise` when it throws or the display
    has ended. On the display thread itself it runs at once. */
template <class Question>
auto call(Question question, decltype(question()) otherwise = {}, Turn turn = Turn::inOrder) -> decltype(question()) {
  if (is_display_thread()) return question();
  using Value = decltype(question());
  auto answer = std::make_shared<Answer<Value>>(std::move(otherwise));
  auto waiter = answer->Waiter();
  post([answer, question = std::move(question)]() mutable { answer->Give(question()); }, turn);
  answer.reset();
  return waiter.get();
}

} // namespace display
