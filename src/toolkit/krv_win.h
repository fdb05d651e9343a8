#pragma once

#include "platform/interface/window.h"

/** Base of the program's windows. Bars come first, each at its place at the top; below them the main child fills the
    window. */
class TKRVWin : public BWindow {
public:
  using BWindow::BWindow;

  /** After the bars. The child follows the window's size. */
  void AddMainChild(BView* child);
  /** Anew, when a bar has come, gone or changed its height. */
  void PlaceMainChild();
  /** Not hidden: brought to the front. */
  void BringUp();

protected:
  /** What nothing of the main child is cut at, together with the bars. Waits for the display. */
  BPoint PreferredSize();

private:
  float BarsBottom() const;

  BView* fMainChild = nullptr;
};
