#include "songtags/songtags_program.h"

#include "common/helper_program.h"
#include "platform/kernel/unique_fd.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <chrono>

namespace {

/** More than the program's own limits for its work. */
constexpr std::chrono::seconds kReadTimeout{90};
constexpr std::chrono::seconds kWriteTimeout{600};

struct TProgramResult {
  TSongStatus status = TSongStatus::kFailed;
  std::string output;
};

TProgramResult run_program(std::vector<std::string> arguments, int input, std::chrono::seconds timeout,
                           const std::stop_token& stop) {
  arguments.insert(arguments.begin(), "vesmo-songtags");
  auto result = run_helper(std::move(arguments), input, {kMostAnswerBytes, timeout}, stop);
  if (!result) return {};
  const int code = result->exitStatus;
  const bool isKnown = code == 0 || (code >= static_cast<int>(TSongStatus::kNotSupported) &&
                                     code <= static_cast<int>(TSongStatus::kFailed));
  return {isKnown ? static_cast<TSongStatus>(code) : TSongStatus::kFailed, std::move(result->output)};
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
