#pragma once

#include "platform/interface/control.h"

/** A check box; its value is 1 or 0. */
class BCheckBox : public BControl {
public:
  BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
            uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetValue(int32 value) override { BControl::SetValue(value != 0 ? 1 : 0); }

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;
};
