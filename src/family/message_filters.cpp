#include "family/message_filters.h"

namespace {
/** Many notices in a row must not get lost, the last one least of all. */
constexpr bigtime_t kPatienceUs = 1000000;
} // namespace

filter_result TIAPFilter::Filter(BMessage* message, BHandler**) {
  fTarget.SendMessage(message, BMessenger(), kPatienceUs);
  return B_DISPATCH_MESSAGE;
}

filter_result TWMFilter::Filter(BMessage*, BHandler**) {
  fTarget.SendCoalesced(kMsgHostWindowMoved);
  return B_DISPATCH_MESSAGE;
}
