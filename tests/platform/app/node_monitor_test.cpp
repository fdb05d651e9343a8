#include "platform/app/node_monitor.h"

#include "platform/app/message.h"
#include "platform/kernel/threads.h"
#include "tests/support/own_looper.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

namespace {

class Watching : public BLooper {
public:
  Watching() : BLooper("watching") {}
  void MessageReceived(BMessage* message) override {
    const std::lock_guard lock(fMutex);
    fIsNotified |= message->what == B_NODE_MONITOR && !message->HasField("name");
    fChanged.notify_all();
  }
  bool IsNotified() {
    std::unique_lock lock(fMutex);
    return fChanged.wait_for(lock, std::chrono::seconds(30), [this] { return fIsNotified; });
  }

private:
  std::mutex fMutex;
  std::condition_variable fChanged;
  bool fIsNotified = false;
};

} // namespace

TEST(NodeMonitor, NotifiesEveryWatchAfterTheKernelsQueueOverflowed) {
  const ScratchFolder folder;
  size_t room = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> room;
  if (room == 0 || room > 1000000) GTEST_SKIP() << "the kernel's queue does not overflow here";
  const OwnLooper<BLooper> stuck(new BLooper("stuck")); // its full queue blocks the monitor
  const BMessage filler('fill');
  while (BMessenger(stuck.get()).SendMessage(&filler, BMessenger(), 0) == B_OK) continue;
  const OwnLooper<Watching> watching(new Watching);
  watching->Run();
  std::filesystem::create_directory(folder.File("busy"));
  const std::string seldom = folder.Write("seldom", "before");
  ASSERT_EQ(watch_node(folder.File("busy").c_str(), B_WATCH_DIRECTORY, stuck.get()), B_OK);
  ASSERT_EQ(watch_node(seldom.c_str(), B_WATCH_STAT, watching.get()), B_OK);
  const std::string busy = folder.File("busy/file");
  for (size_t i = 0; i < room / 2 + 2000; ++i) {
    std::ofstream(busy).put('x');
    unlink(busy.c_str());
  }
  folder.Write("seldom", "after");
  stop_watching(stuck.get());
  EXPECT_TRUE(watching->IsNotified());
  stop_watching(watching.get());
}
