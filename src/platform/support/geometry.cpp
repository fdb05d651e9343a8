#include "platform/support/geometry.h"

void BRect::OffsetBy(float dx, float dy) {
  left += dx;
  right += dx;
  top += dy;
  bottom += dy;
}

void BRect::OffsetTo(BPoint leftTop) {
  OffsetBy(leftTop.x - left, leftTop.y - top);
}

BRect BRect::OffsetToCopy(BPoint leftTop) const {
  BRect moved = *this;
  moved.OffsetTo(leftTop);
  return moved;
}

bool BRect::Contains(BPoint point) const {
  return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
}
