#include "common/helper_program.h"

#include "platform/kernel/unique_fd.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>

namespace {

using TClock = std::chrono::steady_clock;

constexpr int kStopPollMs = 20;

std::string program_path(const std::string& name) {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return self.parent_path() / name;
}

/** A child process with its standard output; killed by the destructor unless it has been waited for. */
class THelperProcess {
public:
  /** `input` becomes its standard input. Default signal handling: whoever starts it may ignore some. */
  THelperProcess(std::vector<std::string> words, int input) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    fOutput = UniqueFd(ends[0]);
    const UniqueFd writeEnd(ends[1]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, writeEnd.Get(), STDOUT_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t all;
    sigset_t none;
    sigfillset(&all);
    sigemptyset(&none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    if (posix_spawn(&fProcess, pointers[0], &actions, &attributes, pointers.data(), environ) != 0) fProcess = -1;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
  }
  THelperProcess(const THelperProcess&) = delete;
  THelperProcess& operator=(const THelperProcess&) = delete;
  ~THelperProcess() {
    if (fProcess <= 0) return;
    kill(fProcess, SIGKILL);
    static_cast<void>(Wait());
  }

  bool IsRunning() const { return fProcess > 0; }
  int Output() const { return fOutput.Get(); }

  /** The exit status; nothing if it crashed. To be called at the end of its output. */
  std::optional<int> Wait() {
    int status = 0;
    while (waitpid(fProcess, &status, 0) < 0 && errno == EINTR) {
    }
    fProcess = -1;
    return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
  }

private:
  pid_t fProcess = -1;
  UniqueFd fOutput;
};

/** All of the output; nothing if it is too long, too late or no longer wanted. */
std::optional<std::string> read_output(const THelperProcess& process, const THelperLimits& limits,
                                       const std::stop_token& stop) {
  const TClock::time_point end = TClock::now() + limits.timeout;
  std::string bytes;
  std::array<char, 65536> piece;
  while (bytes.size() <= limits.outputBytes && TClock::now() < end && !stop.stop_requested()) {
    pollfd waiting{process.Output(), POLLIN, 0};
    const int ready = poll(&waiting, 1, kStopPollMs);
    if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
    const ssize_t count = ready > 0 ? read(process.Output(), piece.data(), piece.size()) : -1;
    if (count < 0) return {};
    if (count == 0) return bytes;
    bytes.append(piece.data(), static_cast<size_t>(count));
  }
  return {};
}

} // namespace

std::optional<THelperResult> run_helper(std::vector<std::string> words, int input, const THelperLimits& limits,
                                        const std::stop_token& stop) {
  words.front() = program_path(words.front());
  THelperProcess process(std::move(words), input);
  if (!process.IsRunning()) return {};
  auto output = read_output(process, limits, stop);
  const std::optional<int> status = output ? process.Wait() : std::nullopt;
  return status ? std::optional(THelperResult{*status, std::move(*output)}) : std::nullopt;
}

std::optional<THelperResult> run_helper(std::vector<std::string> words, const THelperLimits& limits,
                                        const std::stop_token& stop) {
  const UniqueFd nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  return run_helper(std::move(words), nothing.Get(), limits, stop);
}
