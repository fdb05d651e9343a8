#include "platform/support/reported_once.h"

#include <map>
#include <mutex>

namespace {

struct TReported {
  std::mutex mutex;
  std::map<std::string, std::string> lastOfKind;
};

/** Never destroyed: threads may outlive main. */
TReported& reported() {
  static auto* const instance = new TReported;
  return *instance;
}

} // namespace

bool should_report(const std::string& kind, const std::string& error) {
  const std::lock_guard lock(reported().mutex);
  std::string& last = reported().lastOfKind[kind];
  if (last == error) return false;
  last = error;
  return true;
}

void forget_reported(const std::string& kind) {
  const std::lock_guard lock(reported().mutex);
  reported().lastOfKind.erase(kind);
}
