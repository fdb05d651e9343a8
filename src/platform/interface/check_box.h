#pragma once

#include "platform/interface/control.h"

/** A box to tick; its value is 1 or 0. */
class BCheckBox : public BControl {
public:
  BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
            uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetLabel(const char* label) override;
  void SetValue(int32 value) override;
  void MessageReceived(BMessage* message) override;

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() override;
};
