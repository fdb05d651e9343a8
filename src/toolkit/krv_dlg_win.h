#pragma once

#include "toolkit/krv_win.h"

/** A persistent dialog: closing hides it, the owner calls Quit. Has the preferred size of its main child. */
class TKRVDlgWin : public TKRVWin {
public:
  explicit TKRVDlgWin(const char* title);

  /** Adapts the size, within the screen; to be called after the contents have changed. */
  void Fit();
};
