#pragma once

#include "platform/interface/control.h"

/** A push button. A letter set off in front of its label, as in "G - Go", presses it with the Alt key. Its value is 1
    for the default button. */
class BButton : public BControl {
public:
  BButton(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  /** Draws it as the button that Return means; the window's owner handles the key. */
  void MakeDefault(bool isDefault) { SetValue(isDefault ? 1 : 0); }
  /** A click leaves the keyboard focus where it is. Before the button is attached. */
  void SetFocusByTabOnly() { fIsFocusByTabOnly = true; }

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;

private:
  bool fIsFocusByTabOnly = false;
};
