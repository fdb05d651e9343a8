#include "platform/interface/follow.h"

#include "platform/interface/interface_defs.h"

namespace {

/** For one direction: `low` and `high` are the edges, `growth` is the parent's. */
void follow(float& low, float& high, bool followsLow, bool followsHigh, float growth) {
  if (!followsHigh) return;
  high += growth;
  if (!followsLow) low += growth;
}

} // namespace

BRect follow_parent(BRect frame, uint32 resizingMode, BPoint oldSize, BPoint newSize) {
  const BPoint growth = newSize - oldSize;
  follow(frame.left, frame.right, resizingMode & B_FOLLOW_LEFT, resizingMode & B_FOLLOW_RIGHT, growth.x);
  follow(frame.top, frame.bottom, resizingMode & B_FOLLOW_TOP, resizingMode & B_FOLLOW_BOTTOM, growth.y);
  return frame;
}
