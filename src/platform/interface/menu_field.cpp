#include "platform/interface/menu_field.h"

#include "platform/interface/control_peer.h"

BMenuField::BMenuField(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode)
    : BControl(frame, name, label, message, resizingMode) {
  BControl::SetValue(-1);
  SetAccessibleName(label);
}

std::shared_ptr<display::ControlPeer> BMenuField::MakeControl() {
  auto peer = display::make_menu_field_peer(BMessenger(this));
  peer->SetChoices(fChoices);
  return peer;
}

void BMenuField::SetLabel(const char* label) {
  BControl::SetLabel(label);
  SetAccessibleName(label);
}

void BMenuField::SetChoices(std::vector<std::string> choices) {
  fChoices = std::move(choices);
  if (Control()) Control()->SetChoices(fChoices);
  SetValue(-1);
}

void BMenuField::SetValue(int32 index) {
  BControl::SetValue(index >= 0 && index < static_cast<int32>(fChoices.size()) ? index : -1);
}
