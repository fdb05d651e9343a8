#include "platform/app/node_monitor.h"

#include "tests/support/keeping.h"
#include "tests/support/messages.h"

namespace {

/** Records notices as "opcode name". */
struct Watching : Keeping<BLooper> {
  /** Waits for the notice and forgets it with those before it. */
  bool Gets(const std::string& wanted) {
    return eventually([&] {
      DeliverAll();
      const auto is_wanted = [&](const BMessage& notice) {
        return notice.what == B_NODE_MONITOR && std::to_string(field<int32>(notice, "opcode").value_or(0)) + " " +
                                                        field<std::string>(notice, "name").value_or("") ==
                                                    wanted;
      };
      const auto found = std::ranges::find_if(fReceived, is_wanted);
      if (found == fReceived.end()) return false;
      fReceived.erase(fReceived.begin(), found + 1);
      return true;
    });
  }
};

} // namespace

TEST(NodeMonitor, ReportsWhatHappensToAFolderAndToAFile) {
  const ScratchFolder folder;
  const std::string file = folder.Write("file", "before");
  const OwnLooper<Watching> inFolder(new Watching), ofFile(new Watching);
  ASSERT_EQ(watch_node(folder.Path().c_str(), B_WATCH_DIRECTORY, inFolder.get()), B_OK);
  ASSERT_EQ(watch_node(file.c_str(), B_WATCH_NAME | B_WATCH_STAT, ofFile.get()), B_OK);
  EXPECT_EQ(watch_node(folder.File("none").c_str(), B_WATCH_STAT, ofFile.get()), B_ENTRY_NOT_FOUND);
  folder.Write("new", "");
  EXPECT_TRUE(inFolder->Gets("1 new"));
  std::filesystem::rename(folder.File("new"), folder.File("newer"));
  EXPECT_TRUE(inFolder->Gets("3 new") && inFolder->Gets("3 newer"));
  std::filesystem::remove(folder.File("newer"));
  EXPECT_TRUE(inFolder->Gets("2 newer"));
  folder.Write("file", "longer than before");
  EXPECT_TRUE(ofFile->Gets("4 "));
  std::filesystem::rename(file, folder.File("moved"));
  EXPECT_TRUE(ofFile->Gets("3 "));
  std::filesystem::remove(folder.File("moved"));
  EXPECT_TRUE(ofFile->Gets("2 "));
  stop_watching(inFolder.get());
  stop_watching(ofFile.get());
}

TEST(NodeMonitor, NotifiesEveryWatchAfterTheKernelsQueueOverflowed) {
  const ScratchFolder folder;
  size_t room = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> room;
  if (room == 0 || room > 1000000) GTEST_SKIP() << "the kernel's queue does not overflow here";
  const OwnLooper<BLooper> stuck(new BLooper("stuck")); // its full queue blocks the monitor
  const BMessage filler('fill');
  while (BMessenger(stuck.get()).SendMessage(&filler, BMessenger(), 0) == B_OK) continue;
  const OwnLooper<Watching> watching(new Watching);
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
  EXPECT_TRUE(watching->Gets("4 "));
  stop_watching(watching.get());
}
