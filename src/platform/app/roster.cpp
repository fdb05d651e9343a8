#include "platform/app/roster.h"

#include "platform/app/remote_mail.h"
#include "platform/app/signature_launcher.h"
#include "platform/app/signatures.h"
#include "platform/app/start_program.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <optional>
#include <utility>

namespace {
const BRoster gRoster;

/** How long to wait for the exit code of the desktop's opener. */
constexpr std::chrono::seconds kHandOver{2};

/** Never destroyed: threads may still ask while the process exits. */
SignatureLauncher& launcher() {
  static auto* const instance = new SignatureLauncher;
  return *instance;
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
  return IsRunning(signature) ? B_ALREADY_RUNNING : launcher().Launch(signature);
}

/** A desktop's opener exits once it has passed the document on; its exit code tells whether it could. Without a desktop
    it is often the viewer itself, which keeps running: a success, too. */
status_t BRoster::Launch(const entry_ref* ref) const {
  std::optional<std::future<bool>> opened = start_program({"xdg-open", ref->FullPath()});
  if (!opened) return B_LAUNCH_FAILED;
  const bool stays = opened->wait_for(kHandOver) != std::future_status::ready;
  return stays || opened->get() ? B_OK : B_LAUNCH_FAILED;
}

status_t BRoster::AddName(const char* signature, const BMessenger& target, const std::vector<uint32>& offered) const {
  return add_signature(signature, {target, offered});
}
status_t BRoster::RemoveName(const char* signature) const {
  return remove_signature(signature);
}
