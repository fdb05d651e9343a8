#include "platform/app/message.h"
#include "platform/interface/list_peer.h"
#include "platform/interface/list_view.h"
#include "platform/interface/window.h"
#include "platform/kernel/modifiers.h"

#include <algorithm>

/** Selection by call, key and mouse: always on the window's thread, in the order of the user's input. */

void BListView::Select(int32 index) {
  SelectRange(index, index);
}

void BListView::SelectRange(int32 anchor, int32 current) {
  if (!ItemAt(current)) return;
  const bool isRange = fType == B_RANGE_SELECTION_LIST && ItemAt(anchor);
  const auto [first, last] = std::minmax(isRange ? anchor : current, current);
  ChangeSelection({current, first, last});
}

void BListView::SelectAll() {
  if (IsEmpty() || fType != B_RANGE_SELECTION_LIST) return;
  ChangeSelection({std::max(fSelection.current, int32{0}), 0, CountItems() - 1});
}

void BListView::MarkSelected(bool selected) {
  for (int32 row = fSelection.first; row >= 0 && row <= fSelection.last; ++row) {
    BListItem* const item = fItems[static_cast<size_t>(row)];
    item->fSelected = selected;
    item->fCurrent = selected && row == fSelection.current;
  }
}

void BListView::ChangeSelection(const row_selection& rows) {
  if (rows == fSelection) return;
  MarkSelected(false);
  const row_selection before = std::exchange(fSelection, rows);
  MarkSelected(true);
  FlushRows();
  for (const row_selection& changed : {before, rows})
    if (Rows() && changed.Count() > 0) Rows()->Invalidate(changed.first, changed.last);
  if (Rows()) Rows()->Select(rows);
  SelectionChanged();
}

void BListView::ScrollToSelection() {
  ScrollTo(fSelection.current);
}

void BListView::ScrollTo(int32 index) {
  FlushRows();
  if (Rows() && ItemAt(index)) Rows()->ScrollTo(index);
}

void BListView::KeepInSight(int32 index) {
  FlushRows();
  if (Rows() && ItemAt(index)) Rows()->KeepInSight(index);
}

bool BListView::HasModifier(uint32 modifier) const {
  const BMessage* const key = Window() ? Window()->CurrentMessage() : nullptr;
  int32 held = 0;
  return key && key->FindInt32("modifiers", &held) == B_OK && (static_cast<uint32>(held) & modifier);
}

namespace {

/** Keys with the same meaning with and without the Command modifier. */
bool moves_far(uint8 key) {
  return key == B_HOME || key == B_END || key == B_PAGE_UP || key == B_PAGE_DOWN;
}

} // namespace

void BListView::KeyDown(const char* bytes, int32 count) {
  const auto key = static_cast<uint8>(bytes[0]);
  if (count != 1 || (IsCommand() && !moves_far(key))) return BView::KeyDown(bytes, count);
  if (key == B_RETURN && fSelection.current >= 0) return Invoke();
  if (!MoveSelection(key)) BView::KeyDown(bytes, count);
}

/** False for a key that does not move. Without a selection, Down goes to the first row and Up to the last. */
bool BListView::MoveSelection(uint8 key) {
  const int32 last = CountItems() - 1;
  int32 to = fSelection.current;
  switch (key) {
  case B_DOWN_ARROW:
    to += 1;
    break;
  case B_UP_ARROW:
    to = to < 0 ? last : to - 1;
    break;
  case B_PAGE_DOWN:
    to += fPageLength;
    break;
  case B_PAGE_UP:
    to -= fPageLength;
    break;
  case B_HOME:
    to = 0;
    break;
  case B_END:
    to = last;
    break;
  default:
    return false;
  }
  if (last < 0) return true;
  to = std::clamp(to, 0, last);
  SelectRange(HasModifier(B_SHIFT_KEY) ? fSelection.Anchor() : to, to);
  ScrollToSelection();
  return true;
}
