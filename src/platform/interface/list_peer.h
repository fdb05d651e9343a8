#pragma once

#include "platform/interface/row_selection.h"
#include "platform/interface/view_peer.h"

#include <string>
#include <utility>
#include <vector>

namespace display {

/** Number and heights of the rows of a list. */
struct RowLayout {
  int32 count = 0;
  /** One height for all rows, or one per row. */
  std::vector<float> heights;
  row_selection selected;
};

/** A key that the list reports by itself, in order with the keys that its view gets. */
struct ListShortcut {
  std::string keys; // in portable notation
  int32 command = 0;
  bool repeats = false; // while held down

  friend bool operator==(const ListShortcut&, const ListShortcut&) = default;
};

enum : uint32 {
  // "when" (µs) and "scan_code" are those of the key event; B_KEY_DOWN has both as well.
  DISPLAY_SHORTCUT = '_KSC',    // int32 "command", int64 "when", int32 "scan_code"
  DISPLAY_KEY_RELEASED = '_KYU' // int64 "when", int32 "scan_code"; for every key but modifiers
};

/** Thread-safe handle to a list widget. */
class ListPeer : public ViewPeer {
public:
  ListPeer(const BMessenger& view, bool selectsSeveral);

  /** Replaces the rows. Those before `firstChanged` keep their pictures, the others show theirs until new ones come. */
  void SetRows(RowLayout layout, int32 firstChanged);
  void SetPictures(std::vector<std::pair<int32, BPicture>> pictures);
  void Select(const row_selection& rows);
  void ScrollTo(int32 row);
  /** Scrolls if the row is not clearly in sight, unless the user has just scrolled. */
  void KeepInSight(int32 row);
  /** The pictures of these rows are out of date. */
  void Invalidate(int32 first, int32 last);
  /** Replaces all. They work while the list has the focus. */
  void SetShortcuts(std::vector<ListShortcut> shortcuts);
  /** The view gets key releases as well. */
  void ReportReleases(bool reports);
  void SetPlaceholder(const std::string& text, rgb_color color);
  void SetFont(const BFont&) override {} // pictures have their own
};

} // namespace display
