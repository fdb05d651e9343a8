#include "platform/interface/slider.h"

#include "platform/interface/control_peer.h"

BSlider::BSlider(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode)
    : BControl(frame, name, label, message, resizingMode) {}

std::shared_ptr<display::ControlPeer> BSlider::MakeControl() {
  return display::make_slider_peer(BMessenger(this));
}
