#pragma once

#include "platform/support/types.h"

/** A point in logical pixels; y grows downwards. */
struct BPoint {
  float x = 0;
  float y = 0;

  friend bool operator==(const BPoint&, const BPoint&) = default;
  friend BPoint operator+(BPoint a, BPoint b) { return {a.x + b.x, a.y + b.y}; }
  friend BPoint operator-(BPoint a, BPoint b) { return {a.x - b.x, a.y - b.y}; }
};

/** A rectangle that includes its edges: it is right - left + 1 pixels wide. Empty by default. */
struct BRect {
  float left = 0;
  float top = 0;
  float right = -1;
  float bottom = -1;

  float Width() const { return right - left; }
  float Height() const { return bottom - top; }
  bool IsValid() const { return left <= right && top <= bottom; }
  BPoint LeftTop() const { return {left, top}; }
  void OffsetBy(float dx, float dy);
  void OffsetTo(BPoint leftTop);
  BRect OffsetToCopy(BPoint leftTop) const;
  bool Contains(BPoint point) const;

  friend bool operator==(const BRect&, const BRect&) = default;
};

struct rgb_color {
  uint8 red = 0;
  uint8 green = 0;
  uint8 blue = 0;
  uint8 alpha = 255;

  friend bool operator==(const rgb_color&, const rgb_color&) = default;
};
