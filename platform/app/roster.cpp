#include "platform/app/roster.h"

#include "platform/app/remote_mail.h"
#include "platform/app/signatures.h"

#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

extern char** environ;

namespace {
const BRoster gRoster;

/** How long the opener may take to hand a document over. */
constexpr std::chrono::seconds kHandOver{2};

/** Runs the program, whose exit code tells whether it could do it. A desktop's opener ends when it has handed the
    document over; on a system without a desktop it is often the viewer itself, and stays: then all is well, too. A
    thread of its own takes the exit, so that nothing is left behind. */
status_t start(const char* program, const std::string& argument) {
  std::string name = program;
  std::string value = argument;
  char* const arguments[] = {name.data(), value.data(), nullptr};
  pid_t child = 0;
  if (posix_spawnp(&child, program, nullptr, nullptr, arguments, environ) != 0) return B_LAUNCH_FAILED;
  std::promise<bool> promise;
  std::future<bool> succeeded = promise.get_future();
  std::thread([child, end = std::move(promise)]() mutable {
    int state = 0;
    end.set_value(waitpid(child, &state, 0) == child && WIFEXITED(state) && WEXITSTATUS(state) == 0);
  }).detach();
  const bool stays = succeeded.wait_for(kHandOver) != std::future_status::ready;
  return stays || succeeded.get() ? B_OK : B_LAUNCH_FAILED;
}

} // namespace

const BRoster* const be_roster = &gRoster;

bool BRoster::IsRunning(const char* signature) const {
  return BMessenger(signature).IsValid();
}

std::vector<std::string> BRoster::Signatures(const std::string& beginning) const {
  std::vector<std::string> found = known_signatures();
  for (std::string& signature : RemoteMail::Signatures()) found.push_back(std::move(signature));
  std::erase_if(found, [&](const std::string& signature) { return !signature.starts_with(beginning); });
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

status_t BRoster::Launch(const char* signature) const {
  return IsRunning(signature) ? B_ALREADY_RUNNING : B_LAUNCH_FAILED;
}

status_t BRoster::Launch(const entry_ref* ref) const {
  return start("xdg-open", ref->FullPath());
}

status_t BRoster::AddName(const char* signature, const BMessenger& target, const std::vector<uint32>& offered) const {
  return add_signature(signature, {target, offered});
}
status_t BRoster::RemoveName(const char* signature) const {
  return remove_signature(signature);
}
