#include "toolkit/tool_button.h"

#include "platform/interface/tool_button_peer.h"
#include "toolkit/tool_tip.h"

TToolButton::TToolButton(BRect frame, const char* name, const BBitmap& bitmap, BMessage* message)
    : BControl(frame, name, "", message), fLeastWidth(frame.Width()), fBitmap(bitmap) {}

std::shared_ptr<display::ViewPeer> TToolButton::MakePeer() {
  auto peer = std::make_shared<display::ToolButtonPeer>(BMessenger(this), fBitmap);
  peer->SetFlat(fIsFlat);
  peer->SetEnabled(IsEnabled());
  if (fHasValue) peer->SetPressed(Value() != 0);
  return peer;
}

void TToolButton::SetTip(const char* tip) {
  TToolTip::SetTip(this, tip);
}

void TToolButton::SetValue(int32 value) {
  BControl::SetValue(value);
  fHasValue = true;
  if (Peer()) static_cast<display::ToolButtonPeer*>(Peer())->SetPressed(value != 0);
}

void TToolButton::SetFlat(bool flat) {
  fIsFlat = flat;
  if (Peer()) static_cast<display::ToolButtonPeer*>(Peer())->SetFlat(flat);
}

TSeparatorButton::TSeparatorButton(BRect frame) : BView(frame, "Separator") {}

std::shared_ptr<display::ViewPeer> TSeparatorButton::MakePeer() {
  return display::make_separator_peer(BMessenger(this));
}
