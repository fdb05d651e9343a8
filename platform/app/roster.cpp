#include "platform/app/roster.h"

#include "platform/app/remote_mail.h"
#include "platform/app/signatures.h"

#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <thread>

extern char** environ;

namespace {
const BRoster gRoster;

/** Runs the program and forgets it; a thread of its own takes the exit, so that nothing is left behind. */
status_t start(const char* program, const std::string& argument) {
  std::string name = program;
  std::string value = argument;
  char* const arguments[] = {name.data(), value.data(), nullptr};
  pid_t child = 0;
  if (posix_spawnp(&child, program, nullptr, nullptr, arguments, environ) != 0) return B_LAUNCH_FAILED;
  int state = 0;
  // The desktop's opener ends as soon as it has handed the document over, and its exit code tells whether it could.
  if (waitpid(child, &state, 0) != child) return B_LAUNCH_FAILED;
  return WIFEXITED(state) && WEXITSTATUS(state) == 0 ? B_OK : B_LAUNCH_FAILED;
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

status_t BRoster::AddName(const char* signature, const BMessenger& target) const {
  return add_signature(signature, target);
}
status_t BRoster::RemoveName(const char* signature) const {
  return remove_signature(signature);
}
