#include "window/followed_distance.h"

void TFollowedDistance::Set(BPoint own, BPoint players) {
  fDistance = own - players;
  fSentTo.reset();
}

BPoint TFollowedDistance::Follow(BPoint players) {
  fSentTo = players + fDistance;
  return *fSentTo;
}

bool TFollowedDistance::IsUsersMove(BPoint place, std::optional<BPoint> end) const {
  if (!fSentTo) return true;
  return end && place != *end && place != *fSentTo;
}
