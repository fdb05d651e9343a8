#pragma once

#include <cassert>
#include <functional>
#include <future>
#include <memory>
#include <utility>

namespace display {

/** `first` is before the changes that still wait: for a question that none of them bears upon. */
enum class Turn { inOrder, first };

/** Runs `change` on the display thread, after all posted before it in that turn. Never waits. What is posted before the
    display runs is kept until it does; what is posted after it has ended is dropped. Any thread. */
void post(std::function<void()> change, Turn turn = Turn::inOrder);

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

/** An answer that somebody waits for. When the last holder lets go of it unanswered, the waiter gets the default. */
template <class T>
class Answer {
public:
  explicit Answer(T otherwise) : fOtherwise(std::move(otherwise)) {}
  Answer(const Answer&) = delete;
  Answer& operator=(const Answer&) = delete;
  ~Answer() { Give(std::move(fOtherwise)); }

  std::future<T> Waiter() { return fPromise.get_future(); }
  /** The first one counts. On the display thread. */
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

/** Asks `question` on the display thread and waits for what it returns; a default value when the display has ended.
    On the display thread itself it is asked at once. */
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
