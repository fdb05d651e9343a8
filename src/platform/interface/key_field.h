#pragma once

#include "platform/interface/text_control.h"

/** A field that takes a key instead of typed text: its text is the key last pressed in it, in portable notation
    ("Ctrl+Shift+M"). Tab leaves the field, and Escape goes to the window. */
class BKeyField : public BTextControl {
public:
  using BTextControl::BTextControl;

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;
};
