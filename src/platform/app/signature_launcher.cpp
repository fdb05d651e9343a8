#include "platform/app/signature_launcher.h"

#include "platform/app/installed_programs.h"
#include "platform/app/start_program.h"

#include <optional>
#include <utility>

namespace {

constexpr std::chrono::seconds kPause{10};

bool is_running(const std::future<bool>& exited) {
  return exited.valid() && exited.wait_for(std::chrono::seconds::zero()) != std::future_status::ready;
}

} // namespace

status_t SignatureLauncher::Launch(const std::string& signature, Clock::time_point now) {
  {
    const std::lock_guard lock(fMutex);
    std::erase_if(fAttempts, [now](const auto& attempt) {
      return now - attempt.second.time >= kPause && !is_running(attempt.second.exited);
    });
    const auto [attempt, isNew] = fAttempts.try_emplace(signature, Attempt{now, B_ALREADY_RUNNING, {}});
    if (!isNew) return attempt->second.repeated;
  }
  const std::vector<std::string> command = command_of(signature, application_folders());
  std::optional<std::future<bool>> exited = command.empty() ? std::nullopt : start_program(command);
  const std::lock_guard lock(fMutex);
  Attempt& attempt = fAttempts[signature];
  attempt = {now, exited ? B_ALREADY_RUNNING : B_LAUNCH_FAILED, exited ? std::move(*exited) : std::future<bool>()};
  return exited ? B_OK : B_LAUNCH_FAILED;
}
