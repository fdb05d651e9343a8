#include "family/comm_man.h"

#include "platform/app/application.h"
#include "platform/app/looper_lock.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"

namespace {
constexpr int32 kPriority = 10;
constexpr int32 kCapacity = 100;
/** Waiting for the partner is unlimited, but cancellable at this interval. */
constexpr bigtime_t kSliceUs = 50000;
} // namespace

TCommMan::TCommMan(const char* name, const char* partnerName)
    : BLooper(name, kPriority, kCapacity), fPartnerName(partnerName) {}

thread_id TCommMan::Run() {
  // Locked, so that a greeting of the partner is handled only after Connect.
  const TLooperLock lock(this);
  const thread_id thread = BLooper::Run();
  if (thread >= 0) Connect();
  return thread;
}

status_t TCommMan::Connect() {
  const thread_id thread = find_thread(fPartnerName.c_str());
  if (thread < 0 || be_app == nullptr || fPartner) return B_ERROR;
  const BMessenger partner = be_app->LooperOn(thread);
  if (!partner.IsValid()) return B_ERROR;
  fPartnerName.clear();
  fPartner = std::make_unique<BMessenger>(partner);
  BMessage greeting(kMsgPartnerConnects);
  greeting.AddPointer("CSCommMan", static_cast<BLooper*>(this));
  greeting.AddMessenger("CSMessenger", BMessenger(this));
  SendMessage(&greeting);
  return B_OK;
}

void TCommMan::MessageReceived(BMessage* message) {
  if (message->what == kMsgPartnerConnects) return CommManConnected(*message);
  BLooper::MessageReceived(message);
}

void TCommMan::CommManConnected(const BMessage& message) {
  void* pointer = nullptr;
  if (fPartner || be_app == nullptr || message.FindPointer("CSCommMan", &pointer) != B_OK) return;
  BMessenger sender = be_app->LooperAt(pointer);
  BMessenger address;
  // The messenger distinguishes the sender from a looper created later at the same memory address.
  if (message.FindMessenger("CSMessenger", &address) == B_OK && address != sender) return;
  if (sender.IsValid()) fPartner = std::make_unique<BMessenger>(sender);
}

status_t TCommMan::SendMessage(const BMessage* message) {
  if (!fPartner) return B_ERROR;
  status_t status = B_TIMED_OUT;
  do {
    status = fPartner->SendMessage(message, BMessenger(), kSliceUs);
  } while (status == B_TIMED_OUT && !fEnds);
  return status;
}

status_t TCommMan::SendMessage(const BMessage* message, BMessage* reply) {
  if (!fPartner) return B_ERROR;
  BPendingReply pending;
  status_t status = B_TIMED_OUT;
  do {
    status = fPartner->SendMessage(message, &pending, kSliceUs);
  } while (status == B_TIMED_OUT && !fEnds);
  if (status != B_OK) return status;
  do {
    status = pending.Wait(reply, kSliceUs);
  } while (status == B_TIMED_OUT && !fEnds);
  return status;
}

void TCommMan::CloseWindow(BWindow** window) {
  if (*window == nullptr || !(*window)->Lock()) return;
  (*window)->Quit();
  *window = nullptr;
}
