#pragma once

#include "toolkit/krv_win.h"

/** The display's window. Closing it hides it; its manager ends it. */
class TVesmoDWin : public TKRVWin {
public:
  explicit TVesmoDWin(BRect frame);
  /** Not when it is the player that ends: at the next start the display is to be open again. */
  void PutAway() override;
};
