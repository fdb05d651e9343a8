#include "player/frontend/front_end_host.h"

#include "platform/app/message.h"
#include "platform/app/roster.h"
#include "player/sound/now_playing.h"
#include "plugin/message_codes.h"

#include <unistd.h>

// The signature is unique per process: after the handshake a front end cannot reach another player by mistake.
TFrontEndHost::TFrontEndHost(const TNowPlaying* nowPlaying)
    : BLooper("Sonivo Host", B_REAL_TIME_DISPLAY_PRIORITY), fNowPlaying(nowPlaying),
      fSignature("application/x-vnd.Marvik-Sonivo-Host-" + std::to_string(getpid())) {
  be_roster->AddName(fSignature.c_str(), BMessenger(this), {kMsgHostInformation});
}

TFrontEndHost::~TFrontEndHost() {
  be_roster->RemoveName(fSignature.c_str());
}

void TFrontEndHost::AnswerHandshake(const BMessage& handshake) const {
  BMessage answer(kMsgHostHandshake);
  if (handshake.IsSourceRemote())
    answer.AddString("Signature", fSignature);
  else
    answer.AddMessenger("Msgr", BMessenger(this));
  handshake.SendReply(&answer);
}

void TFrontEndHost::MessageReceived(BMessage* message) {
  if (message->what != kMsgHostInformation) return BLooper::MessageReceived(message);
  const TInfoRecord record = fNowPlaying->Record();
  BMessage answer(kMsgHostInformation);
  answer.AddData("Info", B_STRING_TYPE, &record, sizeof record);
  answer.AddBool("Playing", record.state == TInfoRecord::kPlaying);
  answer.AddInt32("Speed", fNowPlaying->SpeedPercent());
  message->SendReply(&answer);
}
