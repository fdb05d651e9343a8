#include "platform/app/signatures.h"

#include "platform/app/remote_mail.h"
#include "platform/support/log.h"

#include <map>
#include <mutex>

namespace {

struct Table {
  std::mutex mutex;
  std::map<std::string, LetterOffer> offers;
};

Table& table() {
  static Table* const instance = new Table;
  return *instance;
}

} // namespace

status_t add_signature(const std::string& signature, const LetterOffer& offer) {
  bool isInUse = false;
  {
    const std::lock_guard lock(table().mutex);
    LetterOffer& current = table().offers[signature];
    isInUse = current.target.IsValid();
    if (!isInUse) current = offer;
  }
  if (isInUse) {
    log_error(signature, "another looper of this process owns the signature");
    return B_NAME_IN_USE;
  }
  RemoteMail::Publish(signature);
  return B_OK;
}

status_t remove_signature(const std::string& signature) {
  {
    const std::lock_guard lock(table().mutex);
    if (table().offers.erase(signature) == 0) return B_NAME_NOT_FOUND;
  }
  RemoteMail::Withdraw(signature);
  return B_OK;
}

BMessenger find_signature(const std::string& signature) {
  return find_offer(signature).target;
}

LetterOffer find_offer(const std::string& signature) {
  const std::lock_guard lock(table().mutex);
  const auto found = table().offers.find(signature);
  return found != table().offers.end() && found->second.target.IsValid() ? found->second : LetterOffer();
}

std::vector<std::string> known_signatures() {
  const std::lock_guard lock(table().mutex);
  std::vector<std::string> known;
  for (const auto& [signature, offer] : table().offers) known.push_back(signature);
  return known;
}
