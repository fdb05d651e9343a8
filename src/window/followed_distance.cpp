#include "window/followed_distance.h"

#include <algorithm>

namespace {

/** How far a window at `place` gives way to its grown neighbour; `last` is the last place on the screen. */
float clearance(float growth, float place, float last) {
  return std::clamp(last - place, 0.0F, std::max(growth, 0.0F));
}

} // namespace

void TFollowedDistance::Set(BPoint own, const BRect& players) {
  fDistance = own - players.LeftTop();
  fPlayers = players;
  fSentTo.reset();
}

BPoint TFollowedDistance::Follow(const BRect& players, const BRect& own, const BRect& screen) {
  BPoint place = players.LeftTop() + fDistance;
  const bool isToTheRight = fDistance.x > fPlayers.Width();
  const bool isBelow = fDistance.y > fPlayers.Height();
  if (isToTheRight)
    place.x += clearance(players.Width() - fPlayers.Width(), place.x, screen.right - own.Width());
  else if (isBelow)
    place.y += clearance(players.Height() - fPlayers.Height(), place.y, screen.bottom - own.Height());
  fSentTo = place;
  return place;
}

bool TFollowedDistance::IsUsersMove(BPoint place, std::optional<BPoint> end) const {
  if (!fSentTo) return true;
  return end && place != *end && place != *fSentTo;
}
