#include "toolkit/krv_dlg_view.h"

#include "platform/interface/button.h"

#include <algorithm>

namespace {

constexpr float kMargin = 12;
constexpr float kGap = 8;
constexpr float kSmallestButton = 80;

/** Size in pixels: one more than BRect::Width and Height. */
struct Room {
  float width = 0;
  float height = 0;
};

Room room_of(BView* view) {
  const BPoint size = view->PreferredSize();
  return {size.x + 1, size.y + 1};
}

Room room_of(const std::vector<BView*>& row) {
  Room room;
  for (BView* view : row) {
    const Room own = room_of(view);
    room.width += own.width + (view == row.front() ? 0 : kGap);
    room.height = std::max(room.height, own.height);
  }
  return room;
}

/** Fits the largest button. */
Room room_of_one(const std::vector<BButton*>& buttons) {
  Room room{kSmallestButton, 0};
  for (BButton* button : buttons) {
    const Room own = room_of(button);
    room = {std::max(room.width, own.width), std::max(room.height, own.height)};
  }
  return room;
}

void place(BView* view, float left, float top, float width, float height) {
  view->MoveTo(left, top);
  view->ResizeTo(width - 1, height - 1);
}

void place_row(const std::vector<BView*>& row, float top, float height, float width) {
  float left = kMargin;
  for (BView* view : row) {
    const Room own = room_of(view);
    const float taken = view == row.back() ? width - kMargin - left : own.width;
    // A single view fills the height of its row.
    const float high = row.size() == 1 ? height : own.height;
    place(view, left, top + (height - high) / 2, taken, high);
    left += taken + kGap;
  }
}

} // namespace

TKRVDlgView::TKRVDlgView(const char* name) : TKRVView({0, 0, 0, 0}, name) {}

void TKRVDlgView::AddRow(const std::vector<BView*>& views) {
  fRows.push_back(views);
  for (BView* view : views) AddChild(view);
  MoveButtonsToEnd();
}

/** Keeps the buttons last in the Tab order, which is the order of adding. */
void TKRVDlgView::MoveButtonsToEnd() {
  for (BButton* button : fButtons) {
    const bool hasFocus = button->IsFocus();
    RemoveChild(button);
    AddChild(button);
    if (hasFocus) button->MakeFocus();
  }
}

void TKRVDlgView::RemoveRow(BView* first) {
  const auto row = std::ranges::find_if(fRows, [first](const auto& views) { return views.front() == first; });
  if (row == fRows.end()) return;
  for (BView* view : *row) RemoveChild(view);
  fRows.erase(row);
}

void TKRVDlgView::AddButtons(const std::vector<BButton*>& buttons) {
  fButtons = buttons;
  for (BButton* button : buttons) AddChild(button);
}

void TKRVDlgView::SetDefaultButton(BButton* button) {
  fDefault = button;
  button->MakeDefault(true);
}

BPoint TKRVDlgView::PreferredSize() {
  const Room button = room_of_one(fButtons);
  const auto count = static_cast<float>(fButtons.size());
  Room all{count * (button.width + kGap) - kGap, kMargin + button.height + kMargin};
  for (const auto& row : fRows) {
    const Room own = room_of(row);
    all = {std::max(all.width, own.width), all.height + own.height + kGap};
  }
  return {all.width + 2 * kMargin - 1, all.height - 1};
}

void TKRVDlgView::LayOut() {
  const float width = Bounds().Width() + 1;
  const float spare = Bounds().Height() - PreferredSize().y;
  const auto highest = std::ranges::max_element(fRows, {}, [](const auto& row) { return room_of(row).height; });
  const auto changed = spare < 0 || fRows.empty() ? highest : std::prev(fRows.end());
  float top = kMargin;
  for (auto row = fRows.begin(); row != fRows.end(); ++row) {
    const float height = std::max(0.0F, room_of(*row).height + (row == changed ? spare : 0));
    place_row(*row, top, height, width);
    top += height + kGap;
  }
  const Room button = room_of_one(fButtons);
  float right = width - kMargin;
  for (auto i = fButtons.rbegin(); i != fButtons.rend(); ++i) {
    place(*i, right - button.width, Bounds().Height() + 1 - kMargin - button.height, button.width, button.height);
    right -= button.width + kGap;
  }
}

void TKRVDlgView::KeyDown(const char* bytes, int32 count) {
  if (bytes[0] == B_RETURN && fDefault) return fDefault->Invoke();
  if (bytes[0] == B_ESCAPE && fCancel) return fCancel->Invoke();
  TKRVView::KeyDown(bytes, count);
}
