#include "platform/app/handler.h"

#include "platform/app/looper_core.h"

BHandler::BHandler(const char* name) : fName(name ? name : ""), fToken(token_registry::new_token()) {}

BHandler::~BHandler() {
  if (fLooper && fLooper != this) fLooper->RemoveHandler(this);
}

void BHandler::MessageReceived(BMessage* message) {
  if (fNext) return fNext->MessageReceived(message);
  if (!message->HasSpecifiers() || !message->IsSourceWaiting()) return;
  BMessage answer(B_MESSAGE_NOT_UNDERSTOOD);
  answer.AddInt32("error", B_BAD_VALUE);
  answer.AddString("message", "Nothing here answers to this property");
  message->SendReply(&answer);
}

BHandler* BHandler::ResolveSpecifier(BMessage*, int32, BMessage*, int32, const char*) {
  return this;
}
