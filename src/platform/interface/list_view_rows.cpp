#include "platform/app/message.h"
#include "platform/interface/list_peer.h"
#include "platform/interface/list_view.h"
#include "platform/interface/picture.h"
#include "platform/interface/window.h"

#include <algorithm>
#include <cassert>
#include <cmath>

/** How the rows of a list reach the display: the layout in one message, the pictures on demand. */

void BListView::RowsChanged(int32 firstChanged) {
  assert(!Window() || Window()->IsCallAllowed());
  fFirstChanged = std::min(fFirstChanged, firstChanged);
  if (fFlushPending) return;
  fFlushPending = true;
  if (Window()) BMessenger(this).SendCoalesced(display::DISPLAY_ROWS_CHANGED);
}

void BListView::LayOutRows() {
  fHeights.clear();
  for (const BListItem* item : fItems) fHeights.push_back(std::round(item->Height()) + 1);
  fTops.clear();
  if (std::adjacent_find(fHeights.begin(), fHeights.end(), std::not_equal_to<>()) == fHeights.end()) {
    fHeights.resize(std::min<size_t>(fHeights.size(), 1));
    return;
  }
  float top = 0;
  for (const float height : fHeights) {
    fTops.push_back(top);
    top += height;
  }
}

void BListView::FlushRows() {
  if (!fFlushPending) return;
  fFlushPending = false;
  LayOutRows();
  if (Rows()) Rows()->SetRows({CountItems(), fHeights, fSelection}, fFirstChanged);
  fFirstChanged = CountItems();
}

BRect BListView::ItemFrame(int32 index) const {
  if (index < 0 || index >= CountItems()) return {};
  const_cast<BListView*>(this)->FlushRows();
  const auto row = static_cast<size_t>(index);
  const float height = HasOneHeight() ? fHeights[0] : fHeights[row];
  const float top = HasOneHeight() ? height * static_cast<float>(index) : fTops[row];
  return {0, top, Bounds().right, top + height - 1};
}

int32 BListView::RowAt(float y) const {
  if (fHeights.empty()) return -1;
  if (HasOneHeight()) return static_cast<int32>(std::floor(y / fHeights[0]));
  return static_cast<int32>(std::upper_bound(fTops.begin(), fTops.end(), y) - fTops.begin()) - 1;
}

void BListView::Invalidate(BRect rect) {
  FlushRows();
  if (Rows()) Rows()->Invalidate(RowAt(rect.top), RowAt(rect.bottom));
}

void BListView::InvalidateItem(int32 index) {
  FlushRows();
  if (Rows()) Rows()->Invalidate(index, index);
}

void BListView::SetFont(const BFont* font) {
  BView::SetFont(font);
  for (BListItem* item : fItems) Measure(item);
  RowsChanged(0);
}

void BListView::DrawRowText(const row_text& text) {
  DrawString(text.text, text.baseLineStart);
  if (!fRecording || text.text.empty()) return;
  picture_op& op = fRecording->ops.back();
  op.maxWidth = text.maxWidth;
  op.leadBytes = text.leadBytes;
  op.leadColor = text.leadColor;
  op.spoken = text.spoken;
}

void BListView::DrawRows(const BMessage& request) {
  FlushRows();
  const float width = request.GetFloat("width", Bounds().Width());
  fPageLength = request.GetInt32("page", fPageLength);
  std::vector<std::pair<int32, BPicture>> pictures;
  int32 row = 0;
  for (int32 i = 0; request.FindInt32("row", i, &row) == B_OK; ++i) {
    BListItem* const item = ItemAt(row);
    if (!item) continue;
    pictures.emplace_back(row, Recorded([&] {
                            item->DrawItem(this, {0, 0, width, std::round(item->Height())}, true);
                          }));
  }
  Rows()->SetPictures(std::move(pictures));
}
