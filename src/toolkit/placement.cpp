#include "toolkit/placement.h"

#include "platform/interface/screen.h"
#include "platform/interface/window.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr float kGap = 8;
}

BRect frame_beside(const BRect& neighbour, float width, float height, const BRect& screen) {
  const float toTheRight = neighbour.right + kGap;
  const float toTheLeft = neighbour.left - kGap - width;
  const float lastLeft = std::max(screen.left, screen.right - width);
  const float lastTop = std::max(screen.top, screen.bottom - height);
  float left = toTheRight;
  if (toTheRight > lastLeft) left = toTheLeft >= screen.left ? toTheLeft : neighbour.left;
  const BRect frame{std::clamp(left, screen.left, lastLeft), std::clamp(neighbour.top, screen.top, lastTop), 0, 0};
  return {frame.left, frame.top, frame.left + width, frame.top + height};
}

bool is_in_sight(const BRect& frame) {
  constexpr float kGrip = 20;
  if (!std::isfinite(frame.left + frame.top + frame.right + frame.bottom)) return false;
  const float y = frame.top + kGrip;
  const BPoint places[] = {{frame.left + kGrip, y}, {(frame.left + frame.right) / 2, y}, {frame.right - kGrip, y}};
  return std::ranges::any_of(places, [](BPoint place) { return screen_frame(place).Contains(place); });
}

void move_beside(BWindow* window, const BRect& neighbour) {
  const BRect size = window->Bounds();
  const BRect screen = screen_frame(neighbour.LeftTop());
  window->MoveTo(frame_beside(neighbour, size.Width(), size.Height(), screen).LeftTop());
}
