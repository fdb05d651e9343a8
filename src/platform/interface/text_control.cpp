#include "platform/interface/text_control.h"

#include "platform/interface/field_peer.h"

BTextControl::BTextControl(BRect frame, const char* name, const char* label, const char* text, uint32 resizingMode)
    : BControl(frame, name, label, nullptr, resizingMode), fText(text) {
  SetAccessibleName(label);
}

display::FieldPeer* BTextControl::Field() const {
  return static_cast<display::FieldPeer*>(Peer());
}

std::shared_ptr<display::ViewPeer> BTextControl::MakePeer() {
  auto peer = std::make_shared<display::FieldPeer>(BMessenger(this));
  peer->SetText(fText);
  peer->SetEnabled(IsEnabled());
  return peer;
}

void BTextControl::SetLabel(const char* label) {
  BControl::SetLabel(label);
  SetAccessibleName(label);
}

void BTextControl::SetText(const char* text) {
  fText = text;
  if (Field()) Field()->SetText(fText);
}

void BTextControl::SelectAll() {
  if (Field()) Field()->SelectAll();
}

void BTextControl::MessageReceived(BMessage* message) {
  if (message->what != display::DISPLAY_FIELD_CHANGED) return BControl::MessageReceived(message);
  message->FindString("text", &fText);
  if (fModificationMessage) Send(*fModificationMessage);
}
