#include "plugin/message_filters.h"

filter_result TIAPFilter::Filter(BMessage* message, BHandler**) {
  fTarget.SendMessage(message, BMessenger(), 0);
  return B_DISPATCH_MESSAGE;
}

filter_result TWMFilter::Filter(BMessage*, BHandler**) {
  fTarget.SendCoalesced(kMsgHostWindowMoved);
  return B_DISPATCH_MESSAGE;
}
