#pragma once

#include "toolkit/krv_win.h"

/** A dialog that stays alive: closing it hides it until it is shown again; who owns it ends it. As large as its main
    child wants to be. */
class TKRVDlgWin : public TKRVWin {
public:
  explicit TKRVDlgWin(const char* title);

  /** After the contents have changed. */
  void Fit();
};
