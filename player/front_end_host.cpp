#include "player/front_end_host.h"

#include "platform/app/message.h"
#include "player/now_playing.h"

TFrontEndHost::TFrontEndHost(const TNowPlaying* nowPlaying)
    : BLooper("Sonivo Host", B_REAL_TIME_DISPLAY_PRIORITY), fNowPlaying(nowPlaying) {}

void TFrontEndHost::MessageReceived(BMessage* message) {
  if (message->what != kMsgInformation) return BLooper::MessageReceived(message);
  const TInfoRecord record = fNowPlaying->Record();
  BMessage answer(kMsgInformation);
  answer.AddData("Info", B_STRING_TYPE, &record, sizeof record);
  answer.AddBool("Playing", record.state == TInfoRecord::kPlaying);
  message->SendReply(&answer);
}
