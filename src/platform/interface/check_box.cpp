#include "platform/interface/check_box.h"

#include "platform/interface/control_peer.h"

BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode)
    : BControl(frame, name, label, message, resizingMode) {}

std::shared_ptr<display::ControlPeer> BCheckBox::MakeControl() {
  return display::make_check_box_peer(BMessenger(this));
}
