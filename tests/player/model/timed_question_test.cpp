#include "player/model/timed_question.h"

#include "tests/support/testing.h"

TEST(TimedQuestion, AnOverdueAnswerIsNotWaitedForAgainUntilItArrives) {
  TTimedQuestion question;
  uint64 sent = 0;
  const auto unanswered = [&sent](uint64 id) {
    sent = id;
    return true;
  };
  EXPECT_FALSE(question.Ask([](uint64) { return false; })) << "not even sent";
  EXPECT_FALSE(question.Ask(unanswered));
  const uint64 overdue = sent;
  EXPECT_FALSE(question.Ask(unanswered));
  EXPECT_EQ(sent, overdue) << "not asked again";
  question.Answer(overdue, 1.0);

  std::jthread other;
  const auto answer = [&](uint64 id) {
    other = std::jthread([&question, id] {
      question.Answer(id - 1, 2.0);
      question.Answer(id, 3.0);
      question.Answer(id - 1, 4.0); // too late
    });
    return true;
  };
  for (int i = 0; i < 100; ++i) ASSERT_EQ(question.Ask(answer), 3.0);
}
