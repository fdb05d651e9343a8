#include "hostlink/sonivo_window.h"

#include "platform/app/application.h"
#include "platform/interface/window.h"

#include <string_view>

namespace {

constexpr std::string_view kTitleStart = "Sonivo";
/** A window that cannot be locked within this time is skipped. */
constexpr bigtime_t kLockTimeoutUs = 100000;

} // namespace

status_t use_sonivo_window(const std::function<void(BWindow*)>& use) {
  if (be_app == nullptr) return B_ERROR;
  for (const BMessenger& address : be_app->WindowAddresses()) {
    if (address.LockTargetWithTimeout(kLockTimeoutUs) != B_OK) continue;
    auto* const window = static_cast<BWindow*>(address.Target(nullptr));
    const bool found = window->Title().starts_with(kTitleStart);
    if (found) use(window);
    window->Unlock();
    if (found) return B_OK;
  }
  return B_ERROR;
}

status_t get_sonivo_window(BWindow** window) {
  return use_sonivo_window([&](BWindow* found) { *window = found; });
}

status_t get_sonivo_win_workspaces(uint32* workspaces) {
  return use_sonivo_window([&](const BWindow* found) { *workspaces = found->Workspaces(); });
}

status_t get_sonivo_win_frame(BRect* frame) {
  return use_sonivo_window([&](const BWindow* found) { *frame = found->Frame(); });
}
