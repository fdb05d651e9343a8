/** Messages between two loopers beside queued calls between two objects of the toolkit on threads of their own: posts a
    second, and the time of a round trip. Prints ratios. */

#include "bench/rounds.h"
#include "platform/app/looper.h"
#include "platform/app/message.h"

#include <QCoreApplication>
#include <QObject>
#include <QThread>

#include <atomic>
#include <cstdio>
#include <semaphore>
#include <vector>

namespace {

constexpr int kPosts = 200000;
constexpr int kRoundTrips = 20000;
constexpr int kRounds = 7;

std::counting_semaphore<> gDone(0);

class Counter : public BLooper {
public:
  Counter() : BLooper("counter", B_NORMAL_PRIORITY, kPosts + 1) {}
  void MessageReceived(BMessage* message) override {
    if (message->what == 'ping') message->SendReply('pong');
    if (message->what == 'post' && ++fCount == kPosts) {
      fCount = 0;
      gDone.release();
    }
  }

private:
  int fCount = 0;
};

void loopers_post(const BMessenger& target) {
  const BMessage message('post');
  for (int i = 0; i < kPosts; ++i) target.SendMessage(&message, BMessenger());
  gDone.acquire();
}

void toolkit_posts(QObject* target) {
  static int count = 0;
  for (int i = 0; i < kPosts; ++i) {
    QMetaObject::invokeMethod(
        target,
        [] {
          if (++count == kPosts) {
            count = 0;
            gDone.release();
          }
        },
        Qt::QueuedConnection);
  }
  gDone.acquire();
}

void loopers_ask(const BMessenger& target) {
  const BMessage question('ping');
  BMessage answer;
  for (int i = 0; i < kRoundTrips; ++i) target.SendMessage(&question, &answer);
}

void toolkit_asks(QObject* target) {
  for (int i = 0; i < kRoundTrips; ++i) {
    QMetaObject::invokeMethod(
        target, [] {}, Qt::BlockingQueuedConnection);
  }
}

} // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  auto* const looper = new Counter;
  looper->Run();
  const BMessenger target(looper);
  QThread thread;
  thread.start();
  QObject object;
  object.moveToThread(&thread);
  std::vector<double> posts[2];
  std::vector<double> asks[2];
  for (int i = 0; i < kRounds; ++i) {
    posts[0].push_back(seconds_of([&] { loopers_post(target); }));
    posts[1].push_back(seconds_of([&] { toolkit_posts(&object); }));
    asks[0].push_back(seconds_of([&] { loopers_ask(target); }));
    asks[1].push_back(seconds_of([&] { toolkit_asks(&object); }));
  }
  std::printf("%-28s %14s %14s %8s\n", "between two threads", "loopers", "Qt, queued", "ratio");
  std::printf("%-28s %11.0f /s %11.0f /s %7.2fx\n", "posts handled", kPosts / median(posts[0]),
              kPosts / median(posts[1]), median(posts[1]) / median(posts[0]));
  std::printf("%-28s %11.2f us %11.2f us %7.2fx\n", "round trip", median(asks[0]) / kRoundTrips * 1e6,
              median(asks[1]) / kRoundTrips * 1e6, median(asks[0]) / median(asks[1]));
  if (looper->Lock()) looper->Quit();
  thread.quit();
  thread.wait();
  return 0;
}
