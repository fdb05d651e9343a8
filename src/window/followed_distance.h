#pragma once

#include "platform/support/geometry.h"

#include <optional>

/** The distance that the editor's window keeps from the player's while it follows it: the left top of the one less that
    of the other. Tells moves made by following, which leave the distance as it is, from the user's own, which set it.
    Pure; owned by the window, on its thread. */
class TFollowedDistance {
public:
  /** Measures it. */
  void Set(BPoint own, BPoint players);
  /** Where the window has to go now that the player is there. */
  BPoint Follow(BPoint players);
  /** Whether the user has put the window at `place`. `end` is where the move that followed last left the window (the
     edge of the screen may have stopped it); none while that move is still under way. */
  [[nodiscard]] bool IsUsersMove(BPoint place, std::optional<BPoint> end) const;

private:
  BPoint fDistance;
  std::optional<BPoint> fSentTo; // none once the user has moved the window since
};
