#pragma once

#include "platform/app/messenger.h"
#include "window/followed_distance.h"

#include <vector>

class BWindow;
class TWMFilter;

/** Keeps a window at its distance from the player's window when that is moved or resized. Owned by the window, on its
 * thread. */
class THostFollower {
public:
  /** Has `window` receive kMsgHostWindowMoved, and measures the distance. */
  explicit THostFollower(BWindow* window);
  ~THostFollower();
  THostFollower(const THostFollower&) = delete;
  THostFollower& operator=(const THostFollower&) = delete;

  /** Moves the window after the player's, if both are on the same workspaces. */
  void Follow();
  /** After the window has moved to `leftTop`: measures the distance again if it was the user who moved it. */
  void WindowMoved(BPoint leftTop);
  void MeasureDistance();

private:
  BWindow* const fWindow;
  TFollowedDistance fDistance;
  std::vector<TWMFilter*> fFilters; // owned by the player's window
  BMessenger fHostWindow;
};
