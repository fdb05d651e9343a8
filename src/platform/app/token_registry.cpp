#include "platform/app/looper_core.h"

#include <algorithm>

namespace token_registry {

namespace {

struct Registry {
  std::mutex mutex; // guards lastToken, loopers
  uint64 lastToken = 0;
  std::vector<std::shared_ptr<BLooper::Core>> loopers; // in the order of their creation
};

/** Never destroyed: threads may still post while the process exits. */
Registry& registry() {
  static Registry* const instance = new Registry;
  return *instance;
}

} // namespace

uint64 new_token() {
  const std::lock_guard lock(registry().mutex);
  return ++registry().lastToken;
}

void add_looper(const std::shared_ptr<BLooper::Core>& core) {
  const std::lock_guard lock(registry().mutex);
  registry().loopers.push_back(core);
}

void remove_looper(uint64 token) {
  const std::lock_guard lock(registry().mutex);
  std::erase_if(registry().loopers, [&](const auto& core) { return core->token == token; });
}

std::shared_ptr<BLooper::Core> find_looper(uint64 token) {
  const std::lock_guard lock(registry().mutex);
  const auto& all = registry().loopers;
  const auto found = std::find_if(all.begin(), all.end(), [&](const auto& core) { return core->token == token; });
  return found == all.end() ? nullptr : *found;
}

std::vector<std::shared_ptr<BLooper::Core>> all_loopers() {
  const std::lock_guard lock(registry().mutex);
  return registry().loopers;
}

} // namespace token_registry
