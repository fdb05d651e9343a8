#include "platform/interface/scroll_view.h"

#include "platform/interface/view_peer.h"

BScrollView::BScrollView(BRect frame, const char* name, BView* target, uint32 resizingMode)
    : BView(frame, name, resizingMode) {
  SetTarget(target);
}

BScrollView::BScrollView(const char* name, BView* target, uint32 resizingMode)
    : BScrollView(target->Frame(), name, target, resizingMode) {
  target->MoveTo(0, 0);
}

void BScrollView::SetTarget(BView* target) {
  if (target == fTarget) return;
  if (fTarget) RemoveChild(fTarget);
  fTarget = target;
  if (!target) return;
  AddChild(target);
  FillWithTarget();
}

void BScrollView::AllAttached() {
  FillWithTarget();
}

void BScrollView::FillWithTarget() {
  if (fTarget && fTarget->fPeer) fTarget->fPeer->FillParent();
}
