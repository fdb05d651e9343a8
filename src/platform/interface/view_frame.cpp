#include "platform/interface/follow.h"
#include "platform/interface/view.h"
#include "platform/interface/view_peer.h"
#include "platform/interface/window.h"

#include <cassert>

/** The frame of a view: set by a call, then adjusted when its parent is resized. The widget computes the same by itself
    from the same numbers. */

void BView::MoveTo(BPoint leftTop) {
  SetFrame(fFrame.OffsetToCopy(leftTop));
}

void BView::ResizeTo(float width, float height) {
  SetFrame({fFrame.left, fFrame.top, fFrame.left + width, fFrame.top + height});
}

BPoint BView::PreferredSize() {
  return fPeer ? fPeer->PreferredSize() : BPoint{fFrame.Width(), fFrame.Height()};
}

void BView::SetResizingMode(uint32 mode) {
  fResizingMode = mode;
  SetFrame(fFrame);
}

BPoint BView::ParentSize() const {
  if (fParent) return {fParent->fFrame.Width(), fParent->fFrame.Height()};
  return fWindow ? fWindow->LayoutSize() : BPoint{};
}

void BView::SetFrame(BRect frame) {
  assert(!fWindow || fWindow->IsCallAllowed());
  const BRect old = fFrame;
  fFrame = fSetFrame = frame;
  fSetParentSize = ParentSize();
  if (fPeer) fPeer->SetPlacement({fSetFrame, fSetParentSize, fResizingMode});
  FrameChanged(old);
}

void BView::FollowParent() {
  const BRect old = fFrame;
  fFrame = follow_parent(fSetFrame, fResizingMode, fSetParentSize, ParentSize());
  FrameChanged(old);
}

void BView::FrameChanged(BRect old) {
  const bool tells = fWindow && (fFlags & B_FRAME_EVENTS);
  if (tells && old.LeftTop() != fFrame.LeftTop()) FrameMoved(fFrame.LeftTop());
  if (old.Width() == fFrame.Width() && old.Height() == fFrame.Height()) return;
  for (BView* child : fChildren) child->FollowParent();
  if (tells) FrameResized(fFrame.Width(), fFrame.Height());
  Invalidate();
}
