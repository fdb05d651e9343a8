#pragma once

#include "platform/interface/window.h"

/** Base of the program's windows: bars at the top in the order of adding, below them the main child fills the window.
 */
class TKRVWin : public BWindow {
public:
  using BWindow::BWindow;

  /** To be called after adding the bars. The child follows the window's size. */
  void AddMainChild(BView* child);
  /** Places the bars and the main child. To be called after a bar was shown, hidden or changed its height. */
  void PlaceMainChild();
  /** Shows the window, or brings it to the front. */
  void BringUp();

protected:
  /** Smallest size at which the bars and the main child are fully visible. Blocks on the display thread. */
  BPoint PreferredSize();

private:
  float BarsBottom() const;

  BView* fMainChild = nullptr;
};
