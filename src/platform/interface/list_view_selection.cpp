#include "platform/app/message.h"
#include "platform/interface/list_peer.h"
#include "platform/interface/list_view.h"
#include "platform/interface/window.h"
#include "platform/kernel/modifiers.h"

#include <algorithm>

/** Selection by call, key and mouse: always on the window's thread, in the order of the user's input. */

void BListView::Select(int32 index) {
  if (index < 0 || index >= CountItems() || index == fSelection) return;
  ChangeSelection(index);
}

void BListView::ChangeSelection(int32 index) {
  const int32 before = std::exchange(fSelection, index);
  for (const int32 row : {before, index}) {
    BListItem* const item = ItemAt(row);
    if (!item) continue;
    item->fSelected = row == index;
    InvalidateItem(row);
  }
  if (Rows()) Rows()->Select(index);
  SelectionChanged();
}

void BListView::ScrollToSelection() {
  ScrollTo(fSelection);
}

void BListView::ScrollTo(int32 index) {
  FlushRows();
  if (Rows() && ItemAt(index)) Rows()->ScrollTo(index);
}

bool BListView::IsCommand() const {
  const BMessage* const key = Window() ? Window()->CurrentMessage() : nullptr;
  int32 held = 0;
  return key && key->FindInt32("modifiers", &held) == B_OK && (static_cast<uint32>(held) & B_COMMAND_KEY);
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
  if (key == B_RETURN && fSelection >= 0) return Invoke();
  if (!MoveSelection(key)) BView::KeyDown(bytes, count);
}

/** False for a key that does not move. Without a selection, Down goes to the first row and Up to the last. */
bool BListView::MoveSelection(uint8 key) {
  const int32 last = CountItems() - 1;
  int32 to = fSelection;
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
  Select(std::clamp(to, 0, last));
  ScrollToSelection();
  return true;
}
