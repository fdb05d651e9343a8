/** The sandbox for decoding untrusted songs: what it blocks, and that the player works without it. */

#include "confined/confined_work.h"
#include "platform/support/sanitizers.h"
#include "player/peaks/read_song.h"
#include "player/peaks/read_tags.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <time.h>

#include <cstddef>

namespace {

constexpr TWorkLimits kLimits{.cpuSeconds = 20, .wallSeconds = 60, .resultBytes = 1000};

std::optional<std::string> confined(const std::function<std::string()>& work, const TWorkLimits& limits = kLimits) {
  return confined_work({}, limits, work);
}

struct Forbidden {
  const char* name;
  std::function<long()> call;
};

/** Runs a program in a kernel that, as far as that can see, has no filter of system calls; returns what it says on
    standard error. */
std::string said_without_filters(const std::vector<const char*>& words, int* status) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  if (child == 0) {
    sock_filter lines[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_seccomp, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog filter{4, lines};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0) _exit(99);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    dup2(ends[1], STDERR_FILENO);
    execv(words[0], const_cast<char* const*>(words.data()));
    _exit(98);
  }
  close(ends[1]);
  std::string said;
  char c = 0;
  while (read(ends[0], &c, 1) == 1) said.push_back(c);
  close(ends[0]);
  waitpid(child, status, 0);
  return said;
}

} // namespace

TEST(ConfinedWork, ReadsWhatItWasGivenAndReachesNothingElse) {
  const ScratchFolder folder;
  const std::string path = folder.Write("song", "its bytes");
  const UniqueFd file(open(path.c_str(), O_RDONLY));
  const auto result = confined_work({file.Get()}, kLimits, [&] {
    char bytes[9];
    std::string reached;
    if (read(file.Get(), bytes, sizeof bytes) == 9) reached.assign(bytes, sizeof bytes);
    if (open(path.c_str(), O_RDONLY) >= 0) reached += ", a file";
    if (open((path + "2").c_str(), O_WRONLY | O_CREAT, 0600) >= 0) reached += ", a new file";
    if (socket(AF_INET, SOCK_STREAM, 0) >= 0 || socket(AF_UNIX, SOCK_STREAM, 0) >= 0) reached += ", the network";
    if (fork() >= 0) reached += ", a process";
    if (write(STDOUT_FILENO, "x", 1) >= 0 || read(STDIN_FILENO, bytes, 0) >= 0) reached += ", the program's own pipes";
    return reached;
  });
  EXPECT_EQ(result, "its bytes");
}

TEST(ConfinedWork, ASystemCallThatNoSongNeedsEndsIt) {
  const ScratchFolder folder;
  const std::string path = folder.Write("file", "");
  char* const words[] = {nullptr};
  const Forbidden table[] = {
      {"kill", [] { return kill(getppid(), 0); }},
      {"ptrace", [] { return ptrace(PTRACE_TRACEME, 0, nullptr, nullptr); }},
      {"execve", [&] { return execve(path.c_str(), words, words); }},
      {"unlink", [&] { return unlink(path.c_str()); }},
      {"rename", [&] { return rename(path.c_str(), folder.File("other").c_str()); }},
      {"chmod", [&] { return chmod(path.c_str(), 0777); }},
      {"memory to execute",
       [] { return mprotect(mmap(nullptr, 1, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0), 1, PROT_EXEC); }},
  };
  for (const Forbidden& one : table) {
    const auto result = confined([&one] {
      one.call();
      return std::string("went on");
    });
    EXPECT_EQ(result, std::nullopt) << one.name;
  }
  EXPECT_EQ(confined([] { return std::string("works"); }), "works") << "the one after it";
}

TEST(ConfinedWork, GoesOnWhenWhatItLogsCannotBeWrittenToAFile) {
  const ScratchFolder folder;
  const UniqueFd log(open(folder.File("log").c_str(), O_WRONLY | O_CREAT, 0600));
  const UniqueFd before(dup(STDERR_FILENO));
  dup2(log.Get(), STDERR_FILENO);
  const auto result = confined([] {
    const bool isLogged = write(STDERR_FILENO, "x", 1) == 1;
    return std::string(isLogged ? "logged" : "not logged");
  });
  dup2(before.Get(), STDERR_FILENO);
  EXPECT_EQ(result, "not logged");
}

TEST(ConfinedWork, EndsAtItsLimitsAndByErrors) {
  TWorkLimits brief = kLimits;
  brief.cpuSeconds = brief.wallSeconds = 1;
  const auto keep_busy = [] {
    while (getpid() > 0) {
    }
    return std::string("done");
  };
  const auto sleep_long = [] {
    const timespec hour{3600, 0};
    nanosleep(&hour, nullptr);
    return std::string("slept");
  };
  EXPECT_EQ(confined(keep_busy, {.cpuSeconds = 1, .wallSeconds = 600, .resultBytes = 10}), std::nullopt);
  EXPECT_EQ(confined(sleep_long, brief), std::nullopt);
  EXPECT_EQ(confined([] { return std::string(1001, 'x'); }), std::nullopt) << "more than anybody asked for";
  EXPECT_EQ(confined([]() -> std::string { throw std::runtime_error("broken"); }), std::nullopt);
  EXPECT_EQ(confined([]() -> std::string { __builtin_trap(); }), std::nullopt);
  if (kIsSanitized) return;
  EXPECT_EQ(confined([] { return std::to_string(std::vector<char>(size_t{2} << 30).size()); }), std::nullopt);
}

/** Each of these made the decoding library play or show another file than the one it was given. */
TEST(ConfinedWork, ASongThatNamesAnotherFileGivesNothing) {
  const ScratchFolder folder;
  const std::string other = folder.Write("other.wav", silent_wav(4));
  const char* const songs[][2] = {
      {"list.mp3", "ffconcat version 1.0\nfile other.wav\n"},
      {"list.ffconcat", "ffconcat version 1.0\nfile other.wav\n"},
      {"stream.m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:2\n#EXTINF:2,\nother.wav\n#EXT-X-ENDLIST\n"},
      {"session.sdp", "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=audio 5004 RTP/AVP 0\n"},
  };
  for (const auto& [name, bytes] : songs) {
    const std::string song = folder.Write(name, bytes);
    EXPECT_TRUE(read_song_confined(open_song(song)).picture.loudness.empty()) << name;
    EXPECT_EQ(answer_to({{}, song}).tags, TSongTags()) << name;
  }
  EXPECT_FALSE(read_song_confined(open_song(other)).picture.loudness.empty());
}

TEST(ConfinedWork, LogsThatItIsLessConfinedWithoutASystemCallFilter) {
  const ScratchFolder folder;
  const std::string song = folder.Write("a.wav", silent_wav());
  int status = 0;
  const std::string said = said_without_filters({PEAKS_PROGRAM, song.c_str(), nullptr}, &status);
  EXPECT_NE(said.find("no system call filter"), std::string::npos) << said;
  EXPECT_EQ(status, 0) << "and the song is read all the same";
}
