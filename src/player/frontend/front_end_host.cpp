#include "player/frontend/front_end_host.h"

#include "platform/app/message.h"
#include "platform/app/roster.h"
#include "platform/kernel/threads.h"
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
  AnswerInformation(*message);
}

void TFrontEndHost::AnswerInformation(const BMessage& request) {
  const bigtime_t beforeUs = system_time();
  TInfoRecord record = fNowPlaying->Record();
  const bigtime_t readAtUs = beforeUs + (system_time() - beforeUs) / 2; // the sound is asked on another thread
  const bool isPlaying = record.state == TInfoRecord::kPlaying;
  const int32 speedPercent = fNowPlaying->SpeedPercent();
  fPlay.Add({readAtUs, record.positionMs * int64{1000}, speedPercent, isPlaying});
  BMessage answer(kMsgHostInformation);
  int64 whenUs = 0;
  const bool isAboutEarlier = request.FindInt64("When", &whenUs) == B_OK;
  if (const auto earlierMs = isAboutEarlier ? fPlay.PositionMsAt(whenUs) : std::nullopt) {
    record.positionMs = *earlierMs;
    answer.AddInt64("When", whenUs);
  }
  answer.AddData("Info", B_STRING_TYPE, &record, sizeof record);
  answer.AddBool("Playing", isPlaying);
  answer.AddInt32("Speed", speedPercent);
  request.SendReply(&answer);
}
