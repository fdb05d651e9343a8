#pragma once

#include "platform/interface/view.h"

/** Base of container views: lays out its children when attached and when resized. */
class TKRVView : public BView {
public:
  TKRVView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_ALL_SIDES, uint32 flags = 0);

  void AllAttached() override { LayOut(); }
  void FrameResized(float, float) override { LayOut(); }

protected:
  /** Hook: places the children; by default only their resizing modes apply. */
  virtual void LayOut() {}
};
