#include "platform/interface/string_view.h"

#include "platform/interface/string_peer.h"

BStringView::BStringView(BRect frame, const char* name, const char* text, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags), fText(text) {}

std::shared_ptr<display::ViewPeer> BStringView::MakePeer() {
  auto peer = std::make_shared<display::StringPeer>(BMessenger(this));
  peer->SetText(fText);
  peer->SetAlignment(fAlignment);
  return peer;
}

void BStringView::SetText(const char* text) {
  if (fText == text) return;
  fText = text;
  if (Peer()) static_cast<display::StringPeer*>(Peer())->SetText(fText);
}

void BStringView::SetAlignment(alignment align) {
  fAlignment = align;
  if (Peer()) static_cast<display::StringPeer*>(Peer())->SetAlignment(align);
}

void BStringView::SetBuddy(const char* view) {
  if (Peer()) static_cast<display::StringPeer*>(Peer())->SetBuddy(view);
}
