#include "family/message_filters.h"

#include "plugin/message_codes.h"

#include <utility>

namespace {
/** Timeout for a full queue: the manager may itself be waiting for the application's lock. */
constexpr bigtime_t kPatienceUs = 1000000;
/** A limit, since other processes can send any name; the family has two preferences. */
constexpr size_t kMaxUnsent = 16;
} // namespace

filter_result TIAPFilter::Filter(BMessage* message, BHandler**) {
  const std::string item = message->GetString("IAP:SrcIAPItem");
  if (fTarget.SendMessage(message, BMessenger(), kPatienceUs) == B_OK)
    Forget(item);
  else
    Keep(item, *message);
  return B_DISPATCH_MESSAGE;
}

void TIAPFilter::Keep(const std::string& item, const BMessage& notice) {
  {
    const std::lock_guard lock(fMutex);
    if (fUnsent.size() >= kMaxUnsent && !fUnsent.contains(item)) return;
    fUnsent.insert_or_assign(item, notice);
  }
  fTarget.SendCoalesced(kMsgIAPUnsent);
}

/** A later notice of the same preference has been queued and replaces the kept one. */
void TIAPFilter::Forget(const std::string& item) {
  const std::lock_guard lock(fMutex);
  fUnsent.erase(item);
}

std::map<std::string, BMessage> TIAPFilter::TakeUnsent() {
  const std::lock_guard lock(fMutex);
  return std::exchange(fUnsent, {});
}

filter_result TWMFilter::Filter(BMessage*, BHandler**) {
  fTarget.SendCoalesced(kMsgHostWindowMoved);
  return B_DISPATCH_MESSAGE;
}
