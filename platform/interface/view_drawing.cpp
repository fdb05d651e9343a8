#include "platform/display/view_peer.h"
#include "platform/interface/picture.h"
#include "platform/interface/view.h"

/** Drawing calls put operations into the picture that is being recorded. */

void BView::Invalidate(BRect) {
  if (!fPeer || !(fFlags & B_WILL_DRAW)) return;
  BPicture picture;
  Record(&picture);
  Draw(Bounds());
  Record(nullptr);
  fPeer->SetPicture(std::move(picture));
}

void BView::Draw(BRect) {}

void BView::FillRect(BRect rect) {
  if (fRecording) fRecording->ops.push_back({picture_op::kind::fill_rect, fHighColor, rect, {}, {}});
}

void BView::FillRectLow(BRect rect) {
  if (fRecording) fRecording->ops.push_back({picture_op::kind::fill_rect, fLowColor, rect, {}, {}});
}

void BView::StrokeRect(BRect rect) {
  if (fRecording) fRecording->ops.push_back({picture_op::kind::stroke_rect, fHighColor, rect, {}, {}});
}

void BView::DrawString(std::string_view text, BPoint baseLineStart) {
  if (!fRecording || text.empty()) return;
  const BRect place{baseLineStart.x, baseLineStart.y, baseLineStart.x, baseLineStart.y};
  fRecording->ops.push_back({picture_op::kind::string, fHighColor, place, std::string(text), fFont});
}
