#include "hostlink/front_end_receiver.h"

#include "hostlink/data_lock.h"
#include "platform/app/message.h"
#include "platform/app/roster.h"
#include "plugin/message_codes.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr int32 kPriority = 15;
constexpr int32 kCapacity = 100;
/** Of the speed, in percent; a player may report nonsense. */
constexpr int32 kNormalPercent = 100;
constexpr int32 kFastestPercent = 1000;
/** Time for the answer to a handshake to arrive. */
constexpr bigtime_t kHandshakeUs = 20000;
/** Waiting for room in the player's queue is unlimited, but cancellable at this interval. */
constexpr bigtime_t kSliceUs = 50000;
} // namespace

SNFE_Receiver::SNFE_Receiver()
    : BLooper("Sonivo FrontEnd Mailbox", kPriority, kCapacity), fLock(create_sem(1, "FrontEnd Mailbox")) {
  SetAnswerCodes({kMsgHostHandshake, kMsgHostInformation});
}

SNFE_Receiver::~SNFE_Receiver() {
  delete_sem(fLock);
}

status_t SNFE_Receiver::Lock() const {
  return acquire_sem(fLock);
}
void SNFE_Receiver::Unlock() const {
  release_sem(fLock);
}

void SNFE_Receiver::LaunchIfWanted() {
  fHostRunning = be_roster->IsRunning(kHostSignature);
  if (fLaunchHost && !fHostRunning) be_roster->Launch(kHostSignature);
}

status_t SNFE_Receiver::SendWaiting(const BMessenger& host, const BMessage& message) {
  status_t sent = B_TIMED_OUT;
  while (sent == B_TIMED_OUT && !fStopWaiting) sent = host.SendMessage(&message, this, kSliceUs);
  return sent;
}

status_t SNFE_Receiver::Handshake(const TSend& send) {
  const BMessenger host(kHostSignature);
  return host.IsValid() ? send(host, BMessage(kMsgHostHandshake)) : B_BAD_PORT_ID;
}

void SNFE_Receiver::StartSonivo() {
  LaunchIfWanted();
  Handshake([this](const BMessenger& host, const BMessage& message) { return SendWaiting(host, message); });
}

BMessenger SNFE_Receiver::Host() {
  const TDataLock lock(fLock);
  return fHost;
}

status_t SNFE_Receiver::Deliver(const BMessage& message, const TSend& send) {
  if (!Host().IsValid()) {
    LaunchIfWanted();
    const status_t sent = Handshake(send);
    if (sent != B_OK) return sent;
    snooze(kHandshakeUs);
  }
  const BMessenger host = Host();
  return host.IsValid() ? send(host, message) : B_BAD_PORT_ID;
}

void SNFE_Receiver::SendMsg(const BMessage* message) {
  Deliver(*message, [this](const BMessenger& host, const BMessage& sent) { return SendWaiting(host, sent); });
}

bool SNFE_Receiver::TrySendMsg(const BMessage* message) {
  const status_t sent = Deliver(
      *message, [this](const BMessenger& host, const BMessage& part) { return host.SendMessage(&part, this, 0); });
  return sent != B_WOULD_BLOCK && sent != B_TIMED_OUT;
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
  const bool hasPlaying = message.FindBool("Playing", &isPlaying) == B_OK;
  int32 speedPercent = 0;
  const bool hasSpeed = message.FindInt32("Speed", &speedPercent) == B_OK && speedPercent > 0;
  int64 whenUs = 0;
  const bool hasWhen = message.FindInt64("When", &whenUs) == B_OK;
  const TDataLock lock(fLock);
  std::memcpy(fInformation.bytes, bytes, THostInformation::kSize);
  fInformation.speedPercent = hasSpeed ? std::min(speedPercent, kFastestPercent) : kNormalPercent;
  fInformation.isPlaying = hasPlaying ? std::optional(isPlaying) : std::nullopt;
  fInformation.whenUs = hasWhen ? std::optional<bigtime_t>(whenUs) : std::nullopt;
  fArrived = true;
}

void SNFE_Receiver::StoreMessenger(const BMessage& message) {
  BMessenger host;
  std::string signature; // sent instead by a player in another process
  if (message.FindMessenger("Msgr", &host) != B_OK) {
    if (message.FindString("Signature", &signature) != B_OK) return;
    host = BMessenger(signature.c_str());
  }
  const TDataLock lock(fLock);
  fHost = host;
}

void SNFE_Receiver::TakeInformation(THostInformation* information) {
  const TDataLock lock(fLock);
  *information = fInformation;
  fArrived = false;
}
