#include "platform/app/application.h"

#include "platform/app/looper_core.h"
#include "platform/app/signatures.h"
#include "platform/support/log.h"

BApplication* be_app = nullptr;

BApplication::BApplication(const char* signature) : BLooper(signature), fSignature(signature) {
  if (add_signature(fSignature, BMessenger(this)) != B_OK) log_error(fSignature, "a second program of this signature");
  be_app = this;
}

BApplication::~BApplication() {
  remove_signature(fSignature);
  if (be_app == this) be_app = nullptr;
}

int32 BApplication::CountLoopers() const {
  return static_cast<int32>(token_registry::all_loopers().size());
}

BLooper* BApplication::LooperAt(int32 index) const {
  const auto loopers = token_registry::all_loopers();
  return index >= 0 && index < static_cast<int32>(loopers.size()) ? loopers[static_cast<size_t>(index)]->looper
                                                                  : nullptr;
}

namespace {

std::vector<BWindow*> living_windows() {
  std::vector<BWindow*> windows;
  for (const auto& core : token_registry::all_loopers()) {
    if (BWindow* const window = core->window.load()) windows.push_back(window);
  }
  return windows;
}

} // namespace

int32 BApplication::CountWindows() const {
  return static_cast<int32>(living_windows().size());
}

BWindow* BApplication::WindowAt(int32 index) const {
  const std::vector<BWindow*> windows = living_windows();
  return index >= 0 && index < static_cast<int32>(windows.size()) ? windows[static_cast<size_t>(index)] : nullptr;
}
