#include "player/app/transport_commands.h"

#include "platform/app/message.h"
#include "player/app/transport.h"
#include "player/model/player_messages.h"
#include "plugin/message_codes.h"

namespace {

const char* field_of(uint32 command) {
  switch (command) {
  case kMsgSeek:
    return "positionMs";
  case kMsgHostSeek:
  case kMsgHostSeekBy:
    return "Time";
  case kMsgHostSpeedBy:
    return "Percent";
  case kMsgSpeed:
  case kMsgVolume:
    return "percent";
  default:
    return nullptr;
  }
}

bool play_part(const BMessage& message, TTransport* transport) {
  const auto part = song_part_in(message);
  if (part) transport->PlayPart(*part);
  if (message.IsEmpty()) transport->EndPart();
  return true;
}

bool set_repeat(const BMessage& message, TTransport* transport) {
  transport->SetRepeat(message.what, message.GetInt32("agoMs"));
  return true;
}

void carry_out(uint32 command, int32 number, TTransport* transport) {
  switch (command) {
  case kMsgSeek:
  case kMsgHostSeek:
    return transport->Seek(number);
  case kMsgHostSeekBy:
    return transport->Seek(int64{transport->PositionMs()} + number);
  case kMsgSpeed:
    return transport->SetSpeed(number);
  case kMsgHostSpeedBy:
    return transport->SetSpeed(int64{transport->Playback().speedPercent} + number);
  default:
    return transport->SetVolume(number);
  }
}

} // namespace

bool handle_transport_command(const BMessage& message, TTransport* transport) {
  switch (message.what) {
  case kMsgPlayPause:
  case kMsgHostPlayPause:
    transport->PlayPause();
    return true;
  case kMsgHostPlayPart:
    return play_part(message, transport);
  case kMsgRepeatFrom:
  case kMsgRepeatTo:
  case kMsgRepeatOff:
    return set_repeat(message, transport);
  default:
    break;
  }
  const char* const field = field_of(message.what);
  int32 number = 0;
  if (field && message.FindInt32(field, &number) == B_OK) carry_out(message.what, number, transport);
  return field != nullptr;
}
