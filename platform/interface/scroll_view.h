#pragma once

#include "platform/interface/view.h"

/** A frame around a list or text view, which it fills: the target's control brings the scroll bars. The target is a
   child like any other; the one that it replaces belongs to the caller again. */
class BScrollView : public BView {
public:
  /** Made around the target's frame, unless `frame` is given. */
  BScrollView(const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT_TOP, uint32 flags = 0,
              bool horizontal = false, bool vertical = true);
  BScrollView(BRect frame, const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetTarget(BView* target);
  BView* Target() const { return fTarget; }

private:
  BView* fTarget = nullptr;
};
