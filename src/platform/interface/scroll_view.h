#pragma once

#include "platform/interface/view.h"

/** A frame around a list or text view, which it fills: the target's control brings the scroll bars. The target is a
   child like any other; the one that it replaces belongs to the caller again. */
class BScrollView : public BView {
public:
  BScrollView(BRect frame, const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT_TOP);
  /** Made around the target's frame. */
  BScrollView(const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetTarget(BView* target);
  BView* Target() const { return fTarget; }
  void AllAttached() override;

private:
  void FillWithTarget();
  BView* fTarget = nullptr;
};
