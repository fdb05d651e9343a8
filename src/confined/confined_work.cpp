#include "confined/confined_work.h"

#include "confined/system_calls.h"
#include "platform/kernel/unique_fd.h"
#include "platform/support/sanitizers.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>

namespace {

using TClock = std::chrono::steady_clock;

/** Of address space, libraries included. The largest cover takes a quarter of it. */
constexpr rlim_t kMemoryBytes = kIsSanitized ? RLIM_INFINITY : rlim_t{1} << 30;

void limit(__rlimit_resource_t resource, rlim_t most) {
  const rlimit both{most, most};
  setrlimit(resource, &both);
}

const std::optional<TFilterProgram>& filter() {
  static const std::optional<TFilterProgram> program = computing_only();
  return program;
}

/** Closes all descriptors except these and standard error. */
void keep_only(std::vector<int> kept) {
  kept.push_back(STDERR_FILENO);
  std::sort(kept.begin(), kept.end());
  unsigned next = 0;
  for (const int fd : kept) {
    const auto number = static_cast<unsigned>(fd);
    if (number > next) close_range(next, number - 1, 0);
    next = number + 1;
  }
  close_range(next, UINT_MAX, 0);
}

/** False if the kernel supports system call filters and this one could not be set. */
bool confine(const std::vector<int>& kept, const TWorkLimits& limits) {
  keep_only(kept);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  limit(RLIMIT_AS, kMemoryBytes);
  limit(RLIMIT_CPU, limits.cpuSeconds);
  limit(RLIMIT_FSIZE, limits.fileBytes);
  signal(SIGXFSZ, SIG_IGN); // a line that a library logs into a file is lost, and does not end the work
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_NOFILE, 0); // open descriptors stay open
  return !filter() || filter_system_calls(*filter());
}

bool write_all(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(fd, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) return false;
    bytes.remove_prefix(static_cast<size_t>(std::max<ssize_t>(count, 0)));
  }
  return true;
}

/** Runs in the child. Uses _exit, since exit handlers belong to the parent. */
[[noreturn]] void work_and_exit(pid_t parent, std::vector<int> files, int result, const TWorkLimits& limits,
                                const std::function<std::string()>& work) {
  try {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    files.push_back(result);
    if (getppid() == parent && confine(files, limits) && write_all(result, work())) _exit(0);
  } catch (...) { // mostly std::bad_alloc
  }
  _exit(1);
}

/** Reads until the other end is closed; empty if a limit is exceeded. */
std::optional<std::string> read_all(int fd, const TWorkLimits& limits) {
  const auto end = TClock::now() + std::chrono::seconds(limits.wallSeconds);
  std::string bytes;
  std::array<char, 65536> piece;
  while (bytes.size() <= limits.resultBytes) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - TClock::now()).count();
    pollfd waiting{fd, POLLIN, 0};
    const int ready = left > 0 ? poll(&waiting, 1, static_cast<int>(left)) : 0;
    if (ready < 0 && errno == EINTR) continue;
    const ssize_t count = ready > 0 ? read(fd, piece.data(), piece.size()) : -1;
    if (count < 0) return std::nullopt;
    if (count == 0) return bytes;
    bytes.append(piece.data(), static_cast<size_t>(count));
  }
  return std::nullopt;
}

} // namespace

std::optional<std::string> confined_work(const std::vector<int>& files, const TWorkLimits& limits,
                                         const std::function<std::string()>& work) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
  const UniqueFd readEnd(ends[0]);
  UniqueFd writeEnd(ends[1]);
  filter(); // compiled once, before the first fork
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) return std::nullopt;
  if (child == 0) work_and_exit(parent, files, writeEnd.Get(), limits, work);
  writeEnd = UniqueFd();
  auto result = read_all(readEnd.Get(), limits);
  if (!result) kill(child, SIGKILL);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? result : std::nullopt;
}
