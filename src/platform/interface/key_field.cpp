#include "platform/interface/key_field.h"

#include "platform/interface/control_peer.h"

std::shared_ptr<display::ControlPeer> BKeyField::MakeControl() {
  auto peer = display::make_key_field_peer(BMessenger(this));
  peer->SetText(Text());
  return peer;
}
