#include "platform/display/display_thread.h"

#include "platform/app/messenger.h"
#include "tests/support/own_looper.h"
#include "tests/support/testing.h"

#include <QCoreApplication>
#include <QTimer>

TEST(DisplayThread, TasksOfEachPosterRunInOrderOnOneThread) {
  constexpr int kPosters = 4;
  constexpr int kPosts = 5000;
  std::vector<std::vector<int>> seen(kPosters); // used on the display thread only
  std::vector<std::jthread> posters;
  std::atomic<int> elsewhere{0};
  for (int poster = 0; poster < kPosters; ++poster) {
    posters.emplace_back([poster, &seen, &elsewhere] {
      for (int i = 0; i < kPosts; ++i)
        display::post([=, &seen, &elsewhere] {
          if (!display::is_display_thread()) ++elsewhere;
          seen[static_cast<size_t>(poster)].push_back(i);
        });
    });
  }
  posters.clear();
  const auto result = display::call([&seen] { return seen; });
  EXPECT_EQ(elsewhere, 0);
  for (const auto& numbers : result) {
    ASSERT_EQ(numbers.size(), size_t{kPosts});
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
  }
}

TEST(DisplayThread, QuestionWithTurnFirstOvertakesQueuedTasks) {
  std::promise<void> isBusy, goesOn;
  display::post([&] {
    isBusy.set_value();
    goesOn.get_future().wait();
  });
  isBusy.get_future().wait();
  std::atomic<int> made{0};
  for (int i = 0; i < 100; ++i) display::post([&made] { ++made; });
  std::promise<int> madeBefore;
  display::post([&] { madeBefore.set_value(made); }, display::Turn::first);
  goesOn.set_value();
  EXPECT_EQ(madeBefore.get_future().get(), 0);
  EXPECT_EQ(display::call([&made] { return made.load(); }), 100); // this one in its turn
}

TEST(DisplayThread, CallRunsAtOnceOnTheThreadItselfAndAnyExceptionIsContained) {
  EXPECT_EQ(display::call([] { return display::call([] { return 7; }); }), 7);
  EXPECT_EQ(display::call([]() -> int { throw std::runtime_error("this error is part of the test"); }, -5), -5);
  for (const bool isException : {true, false}) {
    std::promise<void> hasThrown;
    display::post([&] {
      QTimer::singleShot(0, QCoreApplication::instance(), [&] {
        hasThrown.set_value();
        if (isException) throw std::runtime_error("this error is part of the test");
        throw 1;
      });
    });
    hasThrown.get_future().wait();
    EXPECT_EQ(display::call([] { return 3; }), 3);
  }
}

TEST(DisplayThread, NeverWaitsForALooper) {
  const OwnLooper<BLooper> full(new BLooper("full", B_NORMAL_PRIORITY, 1));
  const BMessenger looper(full.get());
  looper.SendMessage('some');
  EXPECT_EQ(display::call([&] { return looper.SendMessage('more'); }), B_WOULD_BLOCK);
}

TEST(DisplayAnswer, OnlyTheFirstCountsAndTheDefaultWithoutAny) {
  auto unanswered = std::make_unique<display::Answer<int>>(-1);
  auto waiter = unanswered->Waiter();
  unanswered.reset();
  EXPECT_EQ(waiter.get(), -1);
  display::Answer<int> answer(-1);
  waiter = answer.Waiter();
  for (const int given : {1, 2}) answer.Give(given);
  EXPECT_EQ(waiter.get(), 1);
}
