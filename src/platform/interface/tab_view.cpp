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
  for (size_t i = 0; i < fLabels.size(); ++i) tabs->AddPage(*fChildren[i]->fPeer, fLabels[i], fScrollsPages);
  const display::PageRoom room = display::room_around_pages();
  fAroundPages = room.aroundPages;
  fScrollBarWidth = room.scrollBarWidth;
  PlacePages();
}

void BTabView::FrameResized(float, float) {
  PlacePages();
}

void BTabView::PlacePages() {
  auto* const tabs = static_cast<display::TabPeer*>(Peer());
  for (size_t i = 0; i < fChildren.size(); ++i) {
    const BPoint room{std::max(0.0F, Bounds().Width() - fAroundPages.x),
                      std::max(0.0F, Bounds().Height() - fAroundPages.y)};
    const BPoint needed = fScrollsPages ? fChildren[i]->PreferredSize() : BPoint{};
    if (fScrollsPages && tabs) tabs->SetNeeded(static_cast<int32>(i), needed);
    const BPoint size = SizeOfPage(needed, room);
    fChildren[i]->MoveTo(0, 0);
    fChildren[i]->ResizeTo(size.x, size.y);
  }
}

/** As large as the room that the scroll bars leave, and at least as large as needed. */
BPoint BTabView::SizeOfPage(BPoint needed, BPoint room) const {
  const bool isTooHigh = needed.y > room.y;
  if (isTooHigh) room.x -= fScrollBarWidth;
  if (needed.x > room.x) room.y -= fScrollBarWidth;
  if (!isTooHigh && needed.y > room.y) room.x -= fScrollBarWidth;
  return {std::max(room.x, needed.x), std::max(room.y, needed.y)};
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
