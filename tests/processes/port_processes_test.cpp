#include "platform/kernel/port_folder.h"
#include "platform/kernel/port_frame.h"
#include "platform/kernel/ports.h"
#include "tests/processes/peer.h"
#include "tests/support/testing.h"
#include "tests/support/waiter.h"

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace {

std::atomic<bool> gHasNoDescriptors{false};
std::atomic<int> gRefused{0};

} // namespace

/** Replaces that of the C library, also for the library under test. */
extern "C" int accept4(int listener, sockaddr* address, socklen_t* size, int flags) {
  if (!gHasNoDescriptors) return static_cast<int>(syscall(SYS_accept4, listener, address, size, flags));
  ++gRefused;
  errno = EMFILE;
  return -1;
}

namespace {

size_t open_descriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return static_cast<size_t>(std::distance(begin(all), end(all)));
}

std::string port_file(const std::string& name) {
  return std::string(std::getenv("XDG_RUNTIME_DIR")) + "/koreva/" + name;
}

std::string read_text(port_id port) {
  std::string text(64, '\0');
  int32 code = 0;
  const ssize_t count = read_port(port, &code, text.data(), text.size());
  text.resize(count < 0 ? 0 : static_cast<size_t>(count));
  return text;
}

/** A port of this process, deleted at the end. */
struct OwnPort {
  OwnPort(int32 capacity, const char* name) : fId(create_port(capacity, name)) { EXPECT_GT(fId, 0); }
  OwnPort(const OwnPort&) = delete;
  OwnPort& operator=(const OwnPort&) = delete;
  ~OwnPort() { delete_port(fId); }
  operator port_id() const { return fId; }

private:
  const port_id fId;
};

/** A raw socket connected to the port, as a hostile program would open it. */
UniqueFd raw_line(const std::string& name, std::string_view bytes) {
  UniqueFd line(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, port_file(name).c_str(), sizeof address.sun_path - 1);
  EXPECT_EQ(connect(line.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  send(line.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  return line;
}

} // namespace

TEST(PortsBetweenProcesses, CarryMessagesBothWays) {
  Peer peer;
  ASSERT_EQ(peer.Ask("port theirs 5"), "ok");
  const port_id theirs = find_port("theirs");
  ASSERT_GT(theirs, 0);
  EXPECT_EQ(find_port("theirs"), theirs) << "one id for one port";
  EXPECT_EQ(write_port(theirs, 42, "hello", 5), B_OK);
  EXPECT_EQ(peer.Ask("read theirs"), "42 hello");

  const OwnPort ours(5, "ours");
  EXPECT_EQ(peer.Ask("write ours back 0"), "ok");
  EXPECT_EQ(read_text(ours), "back");
  delete_port(ours);
  EXPECT_EQ(peer.Ask("write ours late 0"), "gone");
}

TEST(PortsBetweenProcesses, AreReadAndDeletedOnlyByTheirOwner) {
  Peer peer;
  peer.Ask("port theirs 5");
  const port_id theirs = find_port("theirs");
  int32 code = 0;
  char byte = 0;
  EXPECT_LT(read_port(theirs, &code, &byte, 1), 0);
  EXPECT_EQ(delete_port(theirs), B_PERMISSION_DENIED);
  EXPECT_EQ(write_port(theirs, 0, "x", 1), B_OK);
}

TEST(PortsBetweenProcesses, AreCreatedByOneOfManyProcessesAtTheSameMoment) {
  std::array<Peer, 4> peers;
  for (int round = 0; round < 20; ++round) {
    for (Peer& peer : peers) peer.Send("port race 1");
    int winners = 0;
    for (Peer& peer : peers) winners += peer.Receive() == "ok";
    EXPECT_EQ(winners, 1);
    EXPECT_EQ(create_port(1, "race"), B_NAME_IN_USE);
    for (Peer& peer : peers) peer.Ask("delete race"); // only the winner may
  }
}

TEST(PortsBetweenProcesses, BlockWritersWhileTheyAreFull) {
  Peer peer;
  const OwnPort ours(2, "narrow");
  EXPECT_EQ(peer.Ask("write narrow one 0"), "ok");
  EXPECT_EQ(peer.Ask("write narrow two 0"), "ok");
  EXPECT_EQ(peer.Ask("write narrow three 0"), "would block");
  EXPECT_EQ(peer.Ask("write narrow three 20000"), "timed out");
  EXPECT_EQ(port_count(ours), 2);
  peer.Send("write narrow three 100000000");
  EXPECT_EQ(read_text(ours), "one");
  EXPECT_EQ(peer.Receive(), "ok");
  EXPECT_EQ(read_text(ours), "two");
  EXPECT_EQ(read_text(ours), "three");
}

TEST(PortsBetweenProcesses, ServeAWaitingWriterAsSoonAsAMessageIsRead) {
  const OwnPort ours(1, "narrow");
  ASSERT_EQ(write_port(ours, 0, "one", 3), B_OK);
  const auto head = frame_head(PortFrame{}, 3);
  const UniqueFd line = raw_line("narrow", std::string(head.data(), head.size()) + "two");
  const auto unreadBytes = [&line] {
    int count = -1;
    return ioctl(line.Get(), SIOCOUTQ, &count) == 0 ? count : -1;
  };
  ASSERT_TRUE(eventually([&] { return unreadBytes() == 0 && is_asleep(thread_named("ports")); }));
  EXPECT_EQ(read_text(ours), "one");
  pollfd status{line.Get(), POLLIN, 0};
  EXPECT_EQ(poll(&status, 1, 30000), 1);
  EXPECT_EQ(port_count(ours), 1);
}

TEST(PortsBetweenProcesses, DropTheMessageOfAWriterThatWasKilledWhileItWaited) {
  auto waiting = std::make_unique<Peer>();
  const OwnPort ours(1, "full");
  waiting->Ask("write full one 0");
  waiting->Send("write full lost 100000000");
  snooze(50000); // most likely it waits by now; the test holds either way
  waiting->Kill();
  Peer other;
  EXPECT_EQ(read_text(ours), "one");
  EXPECT_EQ(other.Ask("write full two 100000000"), "ok");
  EXPECT_EQ(read_text(ours), "two");
}

TEST(PortsBetweenProcesses, AreServedAgainAfterALackOfDescriptorsAndDoNotSpinMeanwhile) {
  constexpr bigtime_t kShortestPauseUs = 10000;
  Peer peer;
  const OwnPort ours(1, "starved");
  const bigtime_t since = system_time();
  gHasNoDescriptors = true;
  peer.Send("write starved one 100000000");
  EXPECT_TRUE(eventually([] { return gRefused >= 2; }));
  const int refused = gRefused; // before the time is taken, so that a slow test cannot fail
  EXPECT_LE(refused, 1 + (system_time() - since) / kShortestPauseUs);
  gHasNoDescriptors = false;
  EXPECT_TRUE(eventually([&] { return port_count(ours) == 1; }));
}

TEST(PortsBetweenProcesses, TakeWhatAWriterSentWithoutWaiting) {
  const OwnPort ours(1, "narrow");
  std::string frames;
  for (const char* text : {"one", "two", "three"}) {
    const auto head = frame_head(PortFrame{0, 0, B_INFINITE_TIMEOUT, {}}, std::strlen(text));
    frames.append(head.data(), head.size()).append(text);
  }
  const UniqueFd line = raw_line("narrow", frames);
  for (const char* text : {"one", "two", "three"}) {
    ASSERT_TRUE(eventually([&] { return port_count(ours) > 0; })) << text;
    EXPECT_EQ(read_text(ours), text);
  }
}

TEST(PortsBetweenProcesses, AWriterToAFullPortBlocksNoOther) {
  Peer stuck;
  Peer free;
  const OwnPort full(1, "full");
  const OwnPort roomy(5, "roomy");
  stuck.Ask("write full one 0");
  stuck.Send("write full two 100000000");
  EXPECT_EQ(free.Ask("write roomy hello 0"), "ok");
  EXPECT_EQ(read_text(roomy), "hello");
  EXPECT_EQ(free.Ask("write full three 0"), "would block");
  delete_port(full);
  EXPECT_EQ(stuck.Receive(), "gone");
}

TEST(PortsBetweenProcesses, OfAStoppedProcessBlockAWriterForALimitedTime) {
  Peer peer;
  ASSERT_EQ(peer.Ask("port asleep 5"), "ok");
  const port_id theirs = find_port("asleep");
  EXPECT_EQ(write_port(theirs, 1, "before", 6), B_OK);
  peer.Stop();
  EXPECT_EQ(write_port_etc(theirs, 1, "never", 5, 0), B_TIMED_OUT);
  peer.Continue();
  EXPECT_EQ(write_port(theirs, 1, "after", 5), B_OK);
  EXPECT_EQ(peer.Ask("read asleep"), "1 before");
  EXPECT_EQ(peer.Ask("read asleep"), "1 after") << "what timed out was not delivered later";
}

TEST(PortsBetweenProcesses, CarryAHundredThousandMessagesInOrderWithoutNewDescriptors) {
  constexpr int32 kMessages = 100000;
  Peer peer;
  peer.Ask("port busy 100");
  const port_id theirs = find_port("busy");
  int32 none = 0;
  ASSERT_EQ(write_port(theirs, 0, &none, sizeof none), B_OK);
  const size_t before = open_descriptors();
  peer.Send("read-many busy " + std::to_string(kMessages));
  for (int32 i = 1; i < kMessages; ++i) ASSERT_EQ(write_port(theirs, i, &i, sizeof i), B_OK);
  EXPECT_EQ(peer.Receive(), std::to_string(kMessages));
  EXPECT_EQ(open_descriptors(), before);
}

TEST(PortsBetweenProcesses, LeaveNoDescriptorsWhenPeersComeAndGo) {
  const OwnPort ours(100, "steady");
  EXPECT_LT(find_port("nobody"), 0); // checks which processes are still there
  const size_t before = open_descriptors();
  for (int i = 0; i < 10; ++i) {
    Peer peer;
    ASSERT_EQ(peer.Ask("port visitor" + std::to_string(i) + " 1"), "ok");
    ASSERT_EQ(write_port(find_port(("visitor" + std::to_string(i)).c_str()), 0, "x", 1), B_OK);
    ASSERT_EQ(peer.Ask("write steady hello 0"), "ok");
  }
  EXPECT_LT(find_port("nobody"), 0);
  // Fewer, if what an earlier test left was closed meanwhile.
  EXPECT_TRUE(eventually([&] { return open_descriptors() <= before; })) << open_descriptors() << " from " << before;
}

TEST(PortsBetweenProcesses, BoundTheSizeOfAMessage) {
  Peer peer;
  const OwnPort ours(1, "big");
  peer.Ask("port theirs 1");
  const port_id theirs = find_port("theirs");
  std::vector<char> bytes(kMaxPortMessage + 1, 'x');
  for (const port_id port : {port_id{ours}, theirs}) {
    EXPECT_EQ(write_port(port, 0, bytes.data(), bytes.size()), B_MESSAGE_TOO_LARGE);
    EXPECT_EQ(write_port(port, 0, bytes.data(), bytes.size() - 1), B_OK);
  }
}

TEST(PortsBetweenProcesses, SurviveArbitraryBytesOnTheirSockets) {
  const OwnPort ours(10, "attacked");
  const auto head = [](uint32 byteCount) {
    const auto bytes = frame_head(PortFrame{}, byteCount);
    return std::string(bytes.data(), bytes.size());
  };
  for (int i = 0; i < 50; ++i) {
    for (const std::string& bytes : {head(0xffffffff), head(100) + "too few", head(0).substr(0, 7), std::string()}) {
      raw_line("attacked", bytes);
    }
  }
  const UniqueFd tooLarge = raw_line("attacked", head(0xffffffff));
  pollfd hungUp{tooLarge.Get(), POLLIN, 0};
  EXPECT_EQ(poll(&hungUp, 1, 30000), 1) << "a head with too large a size is refused";
  Peer peer;
  EXPECT_EQ(peer.Ask("write attacked hello 0"), "ok");
  EXPECT_EQ(read_text(ours), "hello");
}

TEST(PortsBetweenProcesses, LimitTheMemoryOfAllUnfinishedMessages) {
  const OwnPort ours(10, "flooded");
  const auto head = frame_head(PortFrame{}, kMaxPortMessage);
  const std::string begun = std::string(head.data(), head.size()) + std::string(kMaxPortMessage - 1, 'x');
  std::vector<UniqueFd> lines;
  for (int i = 0; i < 12; ++i) lines.push_back(raw_line("flooded", begun));
  const auto is_cut_off = [](const UniqueFd& line) {
    pollfd polled{line.Get(), POLLRDHUP, 0};
    return poll(&polled, 1, 0) > 0;
  };
  const auto count_cut_off = [&] { return std::ranges::count_if(lines, is_cut_off); };
  // Of what is left four fit; one more may have been cut off while the next was still being read.
  EXPECT_TRUE(eventually([&] { return count_cut_off() >= 8; })) << count_cut_off() << " cut off";
  EXPECT_TRUE(is_cut_off(lines.front()) && !is_cut_off(lines.back())) << "those that have been silent longest";
  Peer peer;
  EXPECT_EQ(peer.Ask("write flooded hello 0"), "ok");
  EXPECT_EQ(read_text(ours), "hello");
}

TEST(PortFolder, ThatIsOpenToOthersIsRefused) {
  const std::string folder = port_file("");
  std::filesystem::create_directories(folder);
  chmod(folder.c_str(), 0755);
  EXPECT_EQ(create_port(1, "exposed"), B_PERMISSION_DENIED);
  EXPECT_EQ(find_port("exposed"), B_PERMISSION_DENIED);
  chmod(folder.c_str(), 0700);
  const OwnPort port(1, "exposed");
}

TEST(PortFolder, KeepsTheNameThatASuccessorHasTaken) {
  port_folder::Listener first;
  port_folder::Listener second;
  ASSERT_EQ(port_folder::listen_as("heir", &first), B_OK);
  shutdown(first.socket.Get(), SHUT_RDWR); // as after a crash; open, so that its inode is not used again
  ASSERT_EQ(port_folder::listen_as("heir", &second), B_OK);
  port_folder::remove_name("heir", first.inode);
  UniqueFd connected;
  EXPECT_EQ(port_folder::connect_to("heir", &connected), B_OK);
  port_folder::remove_name("heir", second.inode);
  EXPECT_EQ(port_folder::connect_to("heir", &connected), B_NAME_NOT_FOUND);
}

TEST(PortFolder, ThatBelongsToAnotherUserIsRefused) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
  const std::string folder = port_file("");
  std::filesystem::create_directories(folder);
  chmod(folder.c_str(), 0700);
  ASSERT_EQ(chown(folder.c_str(), 65534, 65534), 0);
  EXPECT_EQ(create_port(1, "foreign"), B_PERMISSION_DENIED);
  EXPECT_EQ(find_port("foreign"), B_PERMISSION_DENIED);
  EXPECT_EQ(chown(folder.c_str(), geteuid(), getegid()), 0);
}

TEST(PortFolder, ThatIsALinkIsRefused) {
  std::string folder = port_file("");
  folder.pop_back();
  std::filesystem::remove_all(folder);
  std::filesystem::create_directory_symlink("/tmp", folder);
  EXPECT_EQ(create_port(1, "led-astray"), B_PERMISSION_DENIED);
  std::filesystem::remove(folder);
}

TEST(PortNames, AreFileNamesAndNoLonger) {
  for (const char* const name : {"", ".", "..", ".hidden", "a/b", "line\nend"}) {
    EXPECT_EQ(create_port(1, name), B_BAD_VALUE) << name;
  }
  EXPECT_EQ(create_port(1, std::string(81, 'x').c_str()), B_BAD_VALUE);
  const OwnPort longest(1, std::string(80, 'x').c_str());
}
