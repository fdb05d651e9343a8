#include "platform/interface/menu_field.h"

#include "platform/interface/menu_field_peer.h"

using display::MenuFieldPeer;

BMenuField::BMenuField(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode)
    : BControl(frame, name, label, message, resizingMode) {
  BControl::SetValue(-1);
  SetAccessibleName(label);
}

std::shared_ptr<display::ViewPeer> BMenuField::MakePeer() {
  auto peer = std::make_shared<MenuFieldPeer>(BMessenger(this));
  peer->SetChoices(fChoices);
  peer->SetChosen(Value());
  peer->SetEnabled(IsEnabled());
  return peer;
}

void BMenuField::SetLabel(const char* label) {
  BControl::SetLabel(label);
  SetAccessibleName(label);
}

void BMenuField::SetChoices(std::vector<std::string> choices) {
  fChoices = std::move(choices);
  if (Peer()) static_cast<MenuFieldPeer*>(Peer())->SetChoices(fChoices);
  SetValue(-1);
}

void BMenuField::SetValue(int32 index) {
  BControl::SetValue(index >= 0 && index < static_cast<int32>(fChoices.size()) ? index : -1);
  if (Peer()) static_cast<MenuFieldPeer*>(Peer())->SetChosen(Value());
}

void BMenuField::MessageReceived(BMessage* message) {
  int32 index = 0;
  if (message->what != display::DISPLAY_VALUE_CHOSEN) return BControl::MessageReceived(message);
  if (message->FindInt32("value", &index) != B_OK) return;
  BControl::SetValue(index);
  Invoke();
}
