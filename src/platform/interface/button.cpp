#include "platform/interface/button.h"

#include "platform/interface/control_peer.h"

BButton::BButton(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode)
    : BControl(frame, name, label, message, resizingMode) {}

std::shared_ptr<display::ControlPeer> BButton::MakeControl() {
  auto peer = display::make_button_peer(BMessenger(this));
  if (fIsFocusByTabOnly) peer->SetFocusByTabOnly();
  return peer;
}
