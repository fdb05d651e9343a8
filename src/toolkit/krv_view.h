#pragma once

#include "platform/interface/view.h"

/** Base of the program's views that hold others: lays them out when it is attached and whenever its size changes. */
class TKRVView : public BView {
public:
  TKRVView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_ALL_SIDES, uint32 flags = 0);

  void AllAttached() override { LayOut(); }
  void FrameResized(float, float) override { LayOut(); }

protected:
  /** Hook: places the children; without it they stay where their resizing modes bring them. */
  virtual void LayOut() {}
};
