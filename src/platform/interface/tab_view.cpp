#include "platform/interface/tab_view.h"

#include "platform/interface/tab_peer.h"

#include <algorithm>

BTabView::BTabView(BRect frame, const char* name, uint32 resizingMode)
    : BView(frame, name, resizingMode, B_FRAME_EVENTS) {}

std::shared_ptr<display::ViewPeer> BTabView::MakePeer() {
  return std::make_shared<display::TabPeer>(BMessenger(this));
}

void BTabView::AddTab(BView* page, const char* label) {
  fLabels.emplace_back(label);
  AddChild(page);
}

void BTabView::AllAttached() {
  auto* const tabs = static_cast<display::TabPeer*>(Peer());
  for (size_t i = 0; i < fLabels.size(); ++i) tabs->AddPage(*fChildren[i]->fPeer, fLabels[i]);
  fAroundPages = display::room_around_pages();
  PlacePages();
}

void BTabView::FrameResized(float, float) {
  PlacePages();
}

void BTabView::PlacePages() {
  for (BView* page : fChildren) {
    page->MoveTo(0, 0);
    page->ResizeTo(std::max(0.0F, Bounds().Width() - fAroundPages.x),
                   std::max(0.0F, Bounds().Height() - fAroundPages.y));
  }
}

BPoint BTabView::PreferredSize() {
  BPoint largest;
  for (BView* page : fChildren) {
    const BPoint own = page->PreferredSize();
    largest = {std::max(largest.x, own.x), std::max(largest.y, own.y)};
  }
  return largest + fAroundPages;
}

void BTabView::SetTabLabel(int32 index, const char* label) {
  if (index < 0 || index >= CountChildren()) return;
  fLabels[static_cast<size_t>(index)] = label;
  if (Peer()) static_cast<display::TabPeer*>(Peer())->SetLabel(index, label);
}
