#pragma once

#include "platform/support/geometry.h"

class BFont;
class BView;

/** One row of a list view, which does not own it. To be used on the window's thread. */
class BListItem {
public:
  BListItem() = default;
  BListItem(const BListItem&) = delete;
  BListItem& operator=(const BListItem&) = delete;
  virtual ~BListItem() = default;

  /** Draws the row with the drawing calls of `view`; `frame` starts at (0, 0), the row's own left top. */
  virtual void DrawItem(BView* view, BRect frame, bool complete) = 0;
  /** Called when the item enters a list and when the list's font changes; the base sets the height from the font. */
  virtual void Update(BView* view, const BFont* font);

  float Height() const { return fHeight; }
  void SetHeight(float height) { fHeight = height; }
  bool IsSelected() const { return fSelected; }
  /** Of the selected rows, the one that keys move from. */
  bool IsCurrent() const { return fCurrent; }
  bool IsEnabled() const { return fEnabled; }
  void SetEnabled(bool enabled) { fEnabled = enabled; }

private:
  friend class BListView;
  float fHeight = 0;
  bool fSelected = false;
  bool fCurrent = false;
  bool fEnabled = true;
};
