#pragma once

#include "platform/interface/view.h"

/** A frame filled by a list or text view, whose widget has the scroll bars itself. The target is an ordinary child;
    replacing it passes ownership of the old one to the caller. */
class BScrollView : public BView {
public:
  BScrollView(BRect frame, const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT_TOP);
  /** Takes the target's frame. */
  BScrollView(const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetTarget(BView* target);
  BView* Target() const { return fTarget; }
  void AllAttached() override;

private:
  void FillWithTarget();
  BView* fTarget = nullptr;
};
