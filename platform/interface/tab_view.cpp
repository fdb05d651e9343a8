#include "platform/interface/tab_view.h"

#include "platform/display/tab_peer.h"

BTabView::BTabView(BRect frame, const char* name, uint32 resizingMode) : BView(frame, name, resizingMode) {}

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
}

void BTabView::SetTabLabel(int32 index, const char* label) {
  if (index < 0 || index >= CountChildren()) return;
  fLabels[static_cast<size_t>(index)] = label;
  if (Peer()) static_cast<display::TabPeer*>(Peer())->SetLabel(index, label);
}

void BTabView::Select(int32 index) {
  if (Peer()) static_cast<display::TabPeer*>(Peer())->Select(index);
}
