#include "platform/interface/check_box.h"

#include "platform/interface/check_box_peer.h"

using display::CheckBoxPeer;

BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode)
    : BControl(frame, name, label, message, resizingMode) {}

std::shared_ptr<display::ViewPeer> BCheckBox::MakePeer() {
  auto peer = std::make_shared<CheckBoxPeer>(BMessenger(this));
  peer->SetLabel(Label());
  peer->SetChecked(Value() != 0);
  peer->SetEnabled(IsEnabled());
  return peer;
}

void BCheckBox::SetLabel(const char* label) {
  BControl::SetLabel(label);
  if (Peer()) static_cast<CheckBoxPeer*>(Peer())->SetLabel(label);
}

void BCheckBox::SetValue(int32 value) {
  BControl::SetValue(value != 0 ? 1 : 0);
  if (Peer()) static_cast<CheckBoxPeer*>(Peer())->SetChecked(value != 0);
}

void BCheckBox::MessageReceived(BMessage* message) {
  int32 value = 0;
  if (message->what != display::DISPLAY_VALUE_CHOSEN) return BControl::MessageReceived(message);
  if (message->FindInt32("value", &value) != B_OK) return;
  BControl::SetValue(value);
  Invoke();
}
