#pragma once

#include "platform/interface/control.h"

/** A push button. A letter that stands before its label by itself, as in "G - Go", presses it with the Alt key. */
class BButton : public BControl {
public:
  BButton(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetLabel(const char* label) override;
  /** Drawn as the one that Return means; who owns the window sees to the key. */
  void MakeDefault(bool isDefault);

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  bool fIsDefault = false;
};
