#include "toolkit/krv_win.h"

#include "platform/interface/view.h"

#include <algorithm>

void TKRVWin::AddMainChild(BView* child) {
  fMainChild = child;
  child->SetResizingMode(B_FOLLOW_ALL_SIDES);
  AddChild(child);
  PlaceMainChild();
}

float TKRVWin::BarsBottom() const {
  float bottom = -1;
  for (int32 i = 0; i < CountChildren(); ++i) {
    const BView* const bar = ChildAt(i);
    if (bar != fMainChild && !bar->IsHiddenInParent()) bottom = std::max(bottom, bar->Frame().bottom);
  }
  return bottom;
}

void TKRVWin::PlaceMainChild() {
  float top = 0;
  for (int32 i = 0; i < CountChildren(); ++i) {
    BView* const bar = ChildAt(i);
    if (bar == fMainChild || bar->IsHiddenInParent()) continue;
    bar->MoveTo(0, top);
    bar->ResizeTo(Bounds().Width(), bar->Frame().Height());
    top = bar->Frame().bottom + 1;
  }
  fMainChild->MoveTo(0, top);
  fMainChild->ResizeTo(Bounds().Width(), std::max(0.0F, Bounds().bottom - top));
}

void TKRVWin::BringUp() {
  if (IsHidden())
    Show();
  else
    Activate();
}

BPoint TKRVWin::PreferredSize() {
  const BPoint child = fMainChild->PreferredSize();
  return {child.x, child.y + BarsBottom() + 1};
}
