#include "platform/app/application.h"

#include "platform/app/looper_core.h"
#include "platform/app/signatures.h"

BApplication* be_app = nullptr;

BApplication::BApplication(const char* signature, const std::vector<uint32>& offered)
    : BLooper(signature), fSignature(signature) {
  add_signature(fSignature, {BMessenger(this), offered});
  be_app = this;
}

BApplication::~BApplication() {
  remove_signature(fSignature);
  if (be_app == this) be_app = nullptr;
}

int32 BApplication::CountLoopers() const {
  return static_cast<int32>(token_registry::all_loopers().size());
}

std::vector<BMessenger> BApplication::WindowAddresses() const {
  std::vector<BMessenger> windows;
  for (const auto& core : token_registry::all_loopers()) {
    if (core->window.load()) windows.push_back(AddressOf(*core));
  }
  return windows;
}

BMessenger BApplication::LooperOn(thread_id thread) const {
  for (const auto& core : token_registry::all_loopers()) {
    if (core->thread == thread) return AddressOf(*core);
  }
  return {};
}

BMessenger BApplication::LooperAt(const void* pointer) const {
  for (const auto& core : token_registry::all_loopers()) {
    if (core->looper == pointer) return AddressOf(*core);
  }
  return {};
}
