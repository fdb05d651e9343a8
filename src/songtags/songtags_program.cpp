#include "songtags/songtags_program.h"

#include "platform/kernel/unique_fd.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>

namespace {

using TClock = std::chrono::steady_clock;

/** More than the program's own limits for its work. */
constexpr std::chrono::seconds kReadTimeout{90};
constexpr std::chrono::seconds kWriteTimeout{600};
constexpr int kStopPollMs = 50;

std::string program_path() {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return self.parent_path() / "vesmo-songtags";
}

/** A child process with its standard output; killed by the destructor unless it has been waited for. */
class TChild {
public:
  /** `input` becomes its standard input. Default signal handling: whoever starts it may ignore some. */
  TChild(std::vector<std::string> words, int input) {
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
  TChild(const TChild&) = delete;
  TChild& operator=(const TChild&) = delete;
  ~TChild() {
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
std::optional<std::string> read_output(const TChild& child, TClock::time_point end, const std::stop_token& stop) {
  std::string bytes;
  std::array<char, 65536> piece;
  while (bytes.size() <= kMostAnswerBytes && TClock::now() < end && !stop.stop_requested()) {
    pollfd waiting{child.Output(), POLLIN, 0};
    const int ready = poll(&waiting, 1, kStopPollMs);
    if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
    const ssize_t count = ready > 0 ? read(child.Output(), piece.data(), piece.size()) : -1;
    if (count < 0) return {};
    if (count == 0) return bytes;
    bytes.append(piece.data(), static_cast<size_t>(count));
  }
  return {};
}

struct TProgramResult {
  TSongStatus status = TSongStatus::kFailed;
  std::string output;
};

TProgramResult run_program(const std::vector<std::string>& arguments, int input, std::chrono::seconds timeout,
                           const std::stop_token& stop) {
  std::vector<std::string> words{program_path()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  TChild child(words, input);
  if (!child.IsRunning()) return {};
  auto output = read_output(child, TClock::now() + timeout, stop);
  if (!output) return {};
  const int code = child.Wait().value_or(static_cast<int>(TSongStatus::kFailed));
  const bool isKnown = code == 0 || (code >= static_cast<int>(TSongStatus::kNotSupported) &&
                                     code <= static_cast<int>(TSongStatus::kFailed));
  return {isKnown ? static_cast<TSongStatus>(code) : TSongStatus::kFailed, std::move(*output)};
}

/** An open file in memory with the text, at its start. */
UniqueFd memory_file(const std::string& text) {
  UniqueFd file(memfd_create("lyrics", MFD_CLOEXEC));
  const bool isWritten = file && pwrite(file.Get(), text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
  return isWritten ? std::move(file) : UniqueFd();
}

} // namespace

TSongReading read_song_lyrics(const std::string& path, const std::stop_token& stop) {
  const UniqueFd nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  const TProgramResult result = run_program({"read", path}, nothing.Get(), kReadTimeout, stop);
  if (result.status != TSongStatus::kDone) return {result.status, {}};
  auto lyrics = parse_song_lyrics(result.output);
  return lyrics ? TSongReading{TSongStatus::kDone, std::move(*lyrics)} : TSongReading{};
}

TSongStatus write_song_lyrics(const std::string& path, const std::string& state, const std::string& text,
                              const std::stop_token& stop) {
  if (text.empty() || text.size() > kMostLyricsBytes) return TSongStatus::kTooLarge;
  const UniqueFd input = memory_file(text);
  return input ? run_program({"write", path, state}, input.Get(), kWriteTimeout, stop).status : TSongStatus::kFailed;
}
