#include "plugin/comm_man.h"

#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"

namespace {
constexpr int32 kPriority = 10;
constexpr int32 kCapacity = 100;
} // namespace

TCommMan::TCommMan(const char* name, const char* partnerName)
    : BLooper(name, kPriority, kCapacity), fPartnerName(partnerName) {}

thread_id TCommMan::Run() {
  // Locked, so that a partner that answers at once is heard only when this side has done looking.
  Lock();
  const thread_id thread = BLooper::Run();
  Connect();
  Unlock();
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
  greeting.AddPointer("CSCommMan", this);
  SendMessage(&greeting);
  return B_OK;
}

void TCommMan::MessageReceived(BMessage* message) {
  if (message->what == kMsgPartnerConnects) return CommManConnected(*message);
  BLooper::MessageReceived(message);
}

void TCommMan::CommManConnected(const BMessage& message) {
  void* sender = nullptr;
  if (fPartner || message.IsSourceRemote() || message.FindPointer("CSCommMan", &sender) != B_OK || sender == nullptr) {
    return;
  }
  fPartner = std::make_unique<BMessenger>(static_cast<BLooper*>(sender));
}

status_t TCommMan::SendMessage(const BMessage* message) {
  return fPartner ? fPartner->SendMessage(message, BMessenger()) : B_ERROR;
}

status_t TCommMan::SendMessage(const BMessage* message, BMessage* reply) {
  return fPartner ? fPartner->SendMessage(message, reply) : B_ERROR;
}

void TCommMan::CloseWindow(BWindow** window) {
  if (*window == nullptr || !(*window)->Lock()) return;
  (*window)->Quit();
  *window = nullptr;
}
