#pragma once

#include "platform/interface/control.h"

/** A horizontal slider; its value is a share of its range, from 0 to
    display::kSliderSteps (control_peer.h). A click moves it to the pointer. While
    the user drags it, values that are set have no effect; the message is sent when the button is released. */
class BSlider : public BControl {
public:
  /** `label` is for screen readers only. */
  BSlider(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode = B_FOLLOW_LEFT_TOP);

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;
};
