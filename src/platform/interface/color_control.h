#pragma once

#include "platform/interface/control.h"

/** A button that shows a colour and opens a colour dialog. Sends its message for every colour tried there, and for the
    original one when the dialog is cancelled. The label is the accessible name and the dialog's title; a visible label
    is a view of its own. */
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
