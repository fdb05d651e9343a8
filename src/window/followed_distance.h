#pragma once

#include "platform/support/geometry.h"

#include <optional>

/** The distance (difference of the left top corners) that the editor's window keeps from the player's. While the
    player's window is larger than it was when the distance was measured, a window to its right or below it keeps clear
    of it, as far as the screen has room. Distinguishes moves by following, which leave the distance unchanged, from the
    user's, which set it. Pure; owned by the window, on its thread. */
class TFollowedDistance {
public:
  /** Measures the distance. */
  void Set(BPoint own, const BRect& players);
  /** The new place of the window, which has the frame `own`, after the player's was moved or resized to `players`. */
  BPoint Follow(const BRect& players, const BRect& own, const BRect& screen);
  /** Whether the user has moved the window to `place`. `end` is where the last move by following ended (possibly at the
      edge of the screen); none while it is still in progress. */
  [[nodiscard]] bool IsUsersMove(BPoint place, std::optional<BPoint> end) const;

private:
  BPoint fDistance;
  BRect fPlayers;                // when the distance was measured
  std::optional<BPoint> fSentTo; // by the last move; none after the user has moved the window
};
