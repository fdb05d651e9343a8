#pragma once

#include "platform/support/geometry.h"

#include <optional>

/** The distance (difference of the left top corners) that the editor's window keeps from the player's. Distinguishes
    moves by following, which leave the distance unchanged, from the user's, which set it. Pure; owned by the window, on
    its thread. */
class TFollowedDistance {
public:
  /** Measures the distance. */
  void Set(BPoint own, BPoint players);
  /** The window's new place after the player's window moved to `players`. */
  BPoint Follow(BPoint players);
  /** Whether the user has moved the window to `place`. `end` is where the last move by following ended (possibly at the
      edge of the screen); none while it is still in progress. */
  [[nodiscard]] bool IsUsersMove(BPoint place, std::optional<BPoint> end) const;

private:
  BPoint fDistance;
  std::optional<BPoint> fSentTo; // by the last move; none after the user has moved the window
};
