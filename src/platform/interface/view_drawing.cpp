#include "platform/interface/picture.h"
#include "platform/interface/view.h"
#include "platform/interface/view_peer.h"
#include "platform/support/log.h"
#include "platform/support/utf8.h"

#include <exception>

/** Drawing calls append operations to the picture being recorded. */

namespace {

/** More than any screen shows. Laying out an unbounded line (a file without line feeds) would block the display thread
    for minutes. */
constexpr size_t kMostBytesDrawn = 16384;

} // namespace

void BView::Invalidate(BRect) {
  if (!fPeer || !(fFlags & B_WILL_DRAW)) return;
  fPeer->SetPicture(Recorded([this] { Draw(Bounds()); }));
}

BPicture BView::Recorded(const std::function<void()>& draw) {
  BPicture picture;
  fRecording = &picture;
  try {
    draw();
  } catch (const std::exception& error) {
    log_error(Name(), error.what());
  } catch (...) {
    log_error(Name(), "a drawing hook threw something other than an exception");
  }
  fRecording = nullptr;
  return picture;
}

void BView::Draw(BRect) {}

void BView::FillRect(BRect rect) {
  if (fRecording) fRecording->ops.push_back({picture_op::kind::fill_rect, fHighColor, rect, {}, {}});
}

void BView::StrokeRect(BRect rect) {
  if (fRecording) fRecording->ops.push_back({picture_op::kind::stroke_rect, fHighColor, rect, {}, {}});
}

void BView::DrawString(std::string_view text, BPoint baseLineStart) {
  if (!fRecording || text.empty()) return;
  const BRect place{baseLineStart.x, baseLineStart.y, baseLineStart.x, baseLineStart.y};
  fRecording->ops.push_back(
      {picture_op::kind::string, fHighColor, place, std::string(truncated_utf8(text, kMostBytesDrawn)), fFont});
}
