#pragma once

#include "platform/interface/control.h"

/** A button that shows a colour and opens a dialog of colours; its message is sent for every colour that is tried
    there, and for the one of before when the dialog is cancelled. Its label is what it is called by those who listen to
    the screen, and the dialog's title; on the screen it stands beside the button in a view of its own. */
class BColorControl : public BControl {
public:
  BColorControl(BRect frame, const char* name, const char* label, BMessage* message,
                uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetLabel(const char* label) override;
  /** Red, green and blue from the highest byte down, as in `Value`; all colours are opaque. */
  void SetValue(int32 value) override;
  void SetValue(rgb_color color);
  rgb_color ValueAsColor() const;

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;
  void ValueChosen(int32 value) override;
};
