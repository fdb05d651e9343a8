#include "platform/interface/text_control.h"

#include "platform/interface/control_peer.h"

BTextControl::BTextControl(BRect frame, const char* name, const char* label, const char* text, uint32 resizingMode)
    : BControl(frame, name, label, nullptr, resizingMode), fText(text) {
  SetAccessibleName(label);
}

std::shared_ptr<display::ControlPeer> BTextControl::MakeControl() {
  auto peer = display::make_text_field_peer(BMessenger(this));
  peer->SetText(fText);
  return peer;
}

void BTextControl::SetLabel(const char* label) {
  BControl::SetLabel(label);
  SetAccessibleName(label);
}

void BTextControl::SetText(const char* text) {
  fText = text;
  if (Control()) Control()->SetText(fText);
}

void BTextControl::SelectAll() {
  if (Control()) Control()->SelectAll();
}

void BTextControl::PlaceCaretAfter(const std::string& start) {
  if (Control()) Control()->PlaceCaretAfter(start);
}

std::pair<std::string, std::string> BTextControl::TextAroundCaret() const {
  return Control() ? Control()->TextAroundCaret() : std::pair(fText, std::string());
}

void BTextControl::MessageReceived(BMessage* message) {
  if (message->what != display::DISPLAY_FIELD_CHANGED) return BControl::MessageReceived(message);
  fText = message->GetString("text", fText);
  if (fModificationMessage) Send(*fModificationMessage);
}
