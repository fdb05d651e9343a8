#include "hostlink/sonivo_window.h"

#include "platform/app/application.h"
#include "platform/app/looper_lock.h"
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
    const TLooperLock lock(address, kLockTimeoutUs);
    if (!lock) continue;
    auto* const window = static_cast<BWindow*>(lock.Looper());
    if (!window->Title().starts_with(kTitleStart)) continue;
    use(window);
    return B_OK;
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
