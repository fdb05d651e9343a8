#include "plugin/front_end_receiver.h"

#include "platform/app/message.h"
#include "platform/app/roster.h"
#include "platform/kernel/semaphores.h"

#include <cstring>

namespace {
constexpr int32 kPriority = 15;
constexpr int32 kCapacity = 100;
/** Time for the answer to a handshake to arrive. */
constexpr bigtime_t kHandshakeUs = 20000;
} // namespace

SNFE_Receiver::SNFE_Receiver()
    : BLooper("Sonivo FrontEnd Mailbox", kPriority, kCapacity), fLock(create_sem(1, "FrontEnd Mailbox")) {
  SetAnswerCodes({kMsgHostHandshake, kMsgHostInformation});
}

SNFE_Receiver::~SNFE_Receiver() {
  delete_sem(fLock);
}

status_t SNFE_Receiver::LockData() const {
  return acquire_sem(fLock);
}
void SNFE_Receiver::UnlockData() const {
  release_sem(fLock);
}

void SNFE_Receiver::LaunchIfWanted() {
  fHostRunning = be_roster->IsRunning(kHostSignature);
  if (fLaunchHost && !fHostRunning) be_roster->Launch(kHostSignature);
}

bool SNFE_Receiver::Handshake() {
  const BMessenger host(kHostSignature);
  if (!host.IsValid()) return false;
  const BMessage question(kMsgHostHandshake);
  return host.SendMessage(&question, this, 0) == B_OK;
}

void SNFE_Receiver::StartSonivo() {
  LaunchIfWanted();
  Handshake();
}

BMessenger SNFE_Receiver::Host() {
  LockData();
  if (!fHost.IsValid()) fConnected = false;
  const BMessenger host = fConnected ? fHost : BMessenger();
  UnlockData();
  return host;
}

void SNFE_Receiver::SendMsg(const BMessage* message) {
  if (!Host().IsValid()) {
    LaunchIfWanted();
    if (Handshake()) snooze(kHandshakeUs);
  }
  const BMessenger host = Host();
  if (host.IsValid()) host.SendMessage(message, this, 0);
}

void SNFE_Receiver::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgHostInformation:
    return StoreInformation(*message);
  case kMsgHostHandshake:
    return StoreMessenger(*message);
  default:
    BLooper::MessageReceived(message);
  }
}

void SNFE_Receiver::StoreInformation(const BMessage& message) {
  const void* bytes = nullptr;
  ssize_t size = 0;
  if (message.FindData("Info", B_STRING_TYPE, &bytes, &size) != B_OK) return;
  if (size < static_cast<ssize_t>(THostInformation::kSize)) return;
  bool isPlaying = false;
  const bool tells = message.FindBool("Playing", &isPlaying) == B_OK;
  LockData();
  std::memcpy(fInformation.bytes, bytes, THostInformation::kSize);
  fInformation.isPlaying = tells ? std::optional(isPlaying) : std::nullopt;
  fArrived = true;
  UnlockData();
}

void SNFE_Receiver::StoreMessenger(const BMessage& message) {
  LockData();
  if (message.FindMessenger("Msgr", &fHost) == B_OK) fConnected = true;
  UnlockData();
}

void SNFE_Receiver::TakeInformation(THostInformation* information) {
  LockData();
  *information = fInformation;
  fArrived = false;
  UnlockData();
}
