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

std::string frame_of(std::string_view text, uint32 byteCount, const PortFrame& frame = {}) {
  const auto head = frame_head(frame, byteCount);
  return std::string(head.data(), head.size()).append(text);
}

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

struct PortsBetweenProcesses : testing::Test {
  /** Creates a port in the other process. */
  port_id Theirs(const std::string& name, int32 capacity) {
    EXPECT_EQ(fPeer.Ask("port " + name + " " + std::to_string(capacity)), "ok");
    return find_port(name.c_str());
  }
  Peer fPeer;
};

TEST_F(PortsBetweenProcesses, CarryMessagesBothWaysAndAreReadAndDeletedOnlyByTheirOwner) {
  const port_id theirs = Theirs("theirs", 5);
  ASSERT_GT(theirs, 0);
  EXPECT_EQ(find_port("theirs"), theirs) << "one id for one port";
  EXPECT_EQ(write_port(theirs, 42, "hello", 5), B_OK);
  EXPECT_EQ(fPeer.Ask("read theirs"), "42 hello");
  EXPECT_EQ(read_text(theirs), "");
  EXPECT_EQ(delete_port(theirs), B_PERMISSION_DENIED);
  EXPECT_EQ(write_port(theirs, 0, "x", 1), B_OK);
  EXPECT_EQ(fPeer.Ask("delete theirs"), "ok");
  EXPECT_EQ(write_port(theirs, 0, "x", 1), B_BAD_PORT_ID);

  const OwnPort ours(5, "ours");
  EXPECT_EQ(fPeer.Ask("write ours back 0"), "ok");
  EXPECT_EQ(read_text(ours), "back");
  delete_port(ours);
  EXPECT_EQ(fPeer.Ask("write ours late 0"), "gone");
  EXPECT_FALSE(std::filesystem::exists(port_file("ours")));
}

TEST_F(PortsBetweenProcesses, AreCreatedByOneOfManyProcessesAtTheSameMoment) {
  std::array<Peer, 4> peers;
  for (int round = 0; round < 20; ++round) {
    for (Peer& peer : peers) peer.Send("port race 1");
    EXPECT_EQ(std::ranges::count_if(peers, [](Peer& peer) { return peer.Receive() == "ok"; }), 1);
    EXPECT_EQ(create_port(1, "race"), B_NAME_IN_USE);
    for (Peer& peer : peers) peer.Ask("delete race"); // only the winner may
  }
}

TEST_F(PortsBetweenProcesses, BlockWritersWhileTheyAreFullButNoWriterToAnother) {
  Peer free;
  const OwnPort roomy(5, "roomy");
  {
    const OwnPort narrow(2, "narrow");
    EXPECT_EQ(fPeer.Ask("write narrow one 0"), "ok");
    EXPECT_EQ(fPeer.Ask("write narrow two 0"), "ok");
    EXPECT_EQ(fPeer.Ask("write narrow three 0"), "would block");
    EXPECT_EQ(fPeer.Ask("write narrow three 20000"), "timed out");
    EXPECT_EQ(port_count(narrow), 2);
    fPeer.Send("write narrow three 100000000");
    EXPECT_EQ(read_text(narrow), "one");
    EXPECT_EQ(fPeer.Receive(), "ok");
    fPeer.Send("write narrow four 100000000");
    EXPECT_EQ(free.Ask("write roomy hello 0"), "ok");
    EXPECT_EQ(free.Ask("write narrow five 0"), "would block");
    EXPECT_EQ(read_text(roomy) + read_text(narrow), "hellotwo");
    EXPECT_EQ(fPeer.Receive(), "ok");
    fPeer.Send("write narrow six 100000000");
    for (const char* text : {"three", "four", "six"}) EXPECT_EQ(read_text(narrow), text);
    EXPECT_EQ(fPeer.Receive(), "ok");
    for (const char* text : {"seven", "eight"}) fPeer.Ask(std::string("write narrow ") + text + " 0");
    fPeer.Send("write narrow nine 100000000");
    free.Ask("write roomy hello 0");
  }
  EXPECT_EQ(fPeer.Receive(), "gone") << "the port is";
}

TEST_F(PortsBetweenProcesses, ServeAWaitingWriterAsSoonAsAMessageIsRead) {
  const OwnPort ours(1, "narrow");
  ASSERT_EQ(write_port(ours, 0, "one", 3), B_OK);
  const UniqueFd line = raw_line("narrow", frame_of("two", 3));
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

TEST_F(PortsBetweenProcesses, DropTheMessageOfAWriterThatWasKilledWhileItWaited) {
  Peer waiting;
  const OwnPort ours(1, "full");
  waiting.Ask("write full one 0");
  waiting.Send("write full lost 100000000");
  snooze(50000); // most likely it waits by now; the test holds either way
  waiting.Kill();
  EXPECT_EQ(read_text(ours), "one");
  EXPECT_EQ(fPeer.Ask("write full two 100000000"), "ok");
  EXPECT_EQ(read_text(ours), "two");
}

TEST_F(PortsBetweenProcesses, AreServedAgainAfterALackOfDescriptorsAndDoNotSpinMeanwhile) {
  constexpr bigtime_t kShortestPauseUs = 10000;
  const OwnPort ours(1, "starved");
  const bigtime_t since = system_time();
  gHasNoDescriptors = true;
  fPeer.Send("write starved one 100000000");
  EXPECT_TRUE(eventually([] { return gRefused >= 2; }));
  const int refused = gRefused; // before the time is taken, so that a slow test cannot fail
  EXPECT_LE(refused, 1 + (system_time() - since) / kShortestPauseUs);
  gHasNoDescriptors = false;
  EXPECT_TRUE(eventually([&] { return port_count(ours) == 1; }));
}

TEST_F(PortsBetweenProcesses, TakeWhatAWriterSentWithoutWaiting) {
  const OwnPort ours(1, "narrow");
  std::string frames;
  for (const char* text : {"one", "two", "three"})
    frames += frame_of(text, std::strlen(text), PortFrame{0, 0, B_INFINITE_TIMEOUT, {}});
  const UniqueFd line = raw_line("narrow", frames);
  for (const char* text : {"one", "two", "three"}) {
    ASSERT_TRUE(eventually([&] { return port_count(ours) > 0; })) << text;
    EXPECT_EQ(read_text(ours), text);
  }
}

TEST_F(PortsBetweenProcesses, OfAStoppedProcessBlockAWriterForALimitedTime) {
  const port_id theirs = Theirs("asleep", 5);
  EXPECT_EQ(write_port(theirs, 1, "before", 6), B_OK);
  fPeer.Stop();
  EXPECT_EQ(write_port_etc(theirs, 1, "never", 5, 0), B_TIMED_OUT);
  fPeer.Continue();
  EXPECT_EQ(write_port(theirs, 1, "after", 5), B_OK);
  EXPECT_EQ(fPeer.Ask("read asleep"), "1 before");
  EXPECT_EQ(fPeer.Ask("read asleep"), "1 after") << "what timed out was not delivered later";
}

TEST_F(PortsBetweenProcesses, CarryAHundredThousandMessagesInOrderWithoutNewDescriptors) {
  constexpr int32 kMessages = 100000;
  const port_id theirs = Theirs("busy", 100);
  int32 none = 0;
  ASSERT_EQ(write_port(theirs, 0, &none, sizeof none), B_OK);
  const size_t before = open_descriptors();
  fPeer.Send("read-many busy " + std::to_string(kMessages));
  for (int32 i = 1; i < kMessages; ++i) ASSERT_EQ(write_port(theirs, i, &i, sizeof i), B_OK);
  EXPECT_EQ(fPeer.Receive(), std::to_string(kMessages));
  EXPECT_EQ(open_descriptors(), before);
}

TEST_F(PortsBetweenProcesses, LeaveNoDescriptorsWhenPeersComeAndGo) {
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

TEST_F(PortsBetweenProcesses, BoundTheSizeOfAMessage) {
  const OwnPort ours(1, "big");
  const port_id theirs = Theirs("theirs", 1);
  std::vector<char> bytes(kMaxPortMessage + 1, 'x');
  for (const port_id port : {port_id{ours}, theirs}) {
    EXPECT_EQ(write_port(port, 0, bytes.data(), bytes.size()), B_MESSAGE_TOO_LARGE);
    EXPECT_EQ(write_port(port, 0, bytes.data(), bytes.size() - 1), B_OK);
  }
}

TEST_F(PortsBetweenProcesses, SurviveArbitraryBytesOnTheirSockets) {
  const OwnPort ours(10, "attacked");
  for (int i = 0; i < 50; ++i)
    for (const std::string& bytes :
         {frame_of("", 0xffffffff), frame_of("too few", 100), frame_of("", 0).substr(0, 7), std::string()})
      raw_line("attacked", bytes);
  const UniqueFd tooLarge = raw_line("attacked", frame_of("", kMaxPortMessage + 1));
  pollfd hungUp{tooLarge.Get(), POLLIN, 0};
  EXPECT_EQ(poll(&hungUp, 1, 30000), 1) << "a head with too large a size is refused";
  EXPECT_EQ(fPeer.Ask("write attacked hello 0"), "ok");
  EXPECT_EQ(read_text(ours), "hello");
}

TEST_F(PortsBetweenProcesses, LimitTheMemoryOfAllUnfinishedMessages) {
  const OwnPort ours(10, "flooded");
  const std::string begun = frame_of(std::string(kMaxPortMessage - 1, 'x'), kMaxPortMessage);
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
  EXPECT_EQ(fPeer.Ask("write flooded hello 0"), "ok");
  EXPECT_EQ(read_text(ours), "hello");
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

TEST(PortFolder, ThatIsOpenToOthersOrOfAnotherUserOrALinkIsRefused) {
  const std::string path = port_file(""), folder = path.substr(0, path.size() - 1);
  const auto expect_refused = [](const char* why) {
    EXPECT_EQ(create_port(1, "exposed"), B_PERMISSION_DENIED) << why;
    EXPECT_EQ(find_port("exposed"), B_PERMISSION_DENIED) << why;
  };
  std::filesystem::create_directories(folder);
  for (const mode_t mode : {0701, 0710, 0755}) {
    chmod(folder.c_str(), mode);
    expect_refused("open to others");
  }
  chmod(folder.c_str(), 0700);
  { const OwnPort port(1, "exposed"); }
  if (geteuid() == 0 && chown(folder.c_str(), 65534, 65534) == 0) {
    expect_refused("another user's");
    EXPECT_EQ(chown(folder.c_str(), geteuid(), getegid()), 0);
  }
  std::filesystem::remove_all(folder);
  std::filesystem::create_directory_symlink("/tmp", folder);
  expect_refused("a link");
  std::filesystem::remove(folder);
}

TEST(PortNames, AreFileNamesAndNoLonger) {
  for (const char* const name : {"", ".", "..", ".hidden", "a/b", "line\nend"}) {
    EXPECT_EQ(create_port(1, name), B_BAD_VALUE) << name;
  }
  EXPECT_EQ(create_port(1, std::string(81, 'x').c_str()), B_BAD_VALUE);
  const OwnPort longest(1, std::string(80, 'x').c_str());
}
