#include "platform/app/signatures.h"

#include "platform/app/remote_mail.h"

#include <map>
#include <mutex>

namespace {

struct Table {
  std::mutex mutex;
  std::map<std::string, BMessenger> targets;
};

Table& table() {
  static Table* const instance = new Table;
  return *instance;
}

} // namespace

status_t add_signature(const std::string& signature, const BMessenger& target) {
  {
    const std::lock_guard lock(table().mutex);
    BMessenger& bearer = table().targets[signature];
    if (bearer.IsValid()) return B_NAME_IN_USE;
    bearer = target;
  }
  RemoteMail::Publish(signature);
  return B_OK;
}

status_t remove_signature(const std::string& signature) {
  {
    const std::lock_guard lock(table().mutex);
    if (table().targets.erase(signature) == 0) return B_NAME_NOT_FOUND;
  }
  RemoteMail::Withdraw(signature);
  return B_OK;
}

BMessenger find_signature(const std::string& signature) {
  const std::lock_guard lock(table().mutex);
  const auto found = table().targets.find(signature);
  return found != table().targets.end() && found->second.IsValid() ? found->second : BMessenger();
}

std::vector<std::string> known_signatures() {
  const std::lock_guard lock(table().mutex);
  std::vector<std::string> known;
  for (const auto& [signature, bearer] : table().targets) known.push_back(signature);
  return known;
}
