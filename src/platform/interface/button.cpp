#include "platform/interface/button.h"

#include "platform/interface/button_peer.h"

BButton::BButton(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode)
    : BControl(frame, name, label, message, resizingMode) {}

std::shared_ptr<display::ViewPeer> BButton::MakePeer() {
  auto peer = std::make_shared<display::ButtonPeer>(BMessenger(this));
  peer->SetLabel(Label());
  peer->SetEnabled(IsEnabled());
  peer->SetDefault(fIsDefault);
  return peer;
}

void BButton::SetLabel(const char* label) {
  BControl::SetLabel(label);
  if (Peer()) static_cast<display::ButtonPeer*>(Peer())->SetLabel(label);
}

void BButton::MakeDefault(bool isDefault) {
  fIsDefault = isDefault;
  if (Peer()) static_cast<display::ButtonPeer*>(Peer())->SetDefault(isDefault);
}
