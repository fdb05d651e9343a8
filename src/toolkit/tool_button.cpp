#include "toolkit/tool_button.h"

#include "platform/interface/tool_button_peer.h"
#include "toolkit/tool_tip.h"

TToolButton::TToolButton(BRect frame, const char* name, const BBitmap& bitmap, BMessage* message)
    : BControl(frame, name, "", message), fLeastWidth(frame.Width()), fBitmap(bitmap) {}

std::shared_ptr<display::ControlPeer> TToolButton::MakeControl() {
  auto peer = std::make_shared<display::ToolButtonPeer>(BMessenger(this), fBitmap);
  peer->SetFlat(fIsFlat);
  peer->SetBadge(fHasBadge);
  return peer;
}

void TToolButton::SetTip(const char* tip, const std::string& keys) {
  TToolTip::SetTip(this, tip);
  if (!keys.empty()) SetToolTip(tip + (" (" + keys + ")"));
}

void TToolButton::SetFlat(bool flat) {
  fIsFlat = flat;
  if (Peer()) static_cast<display::ToolButtonPeer*>(Peer())->SetFlat(flat);
}

void TToolButton::SetBadge(const std::string& description) {
  SetAccessibleDescription(description);
  fHasBadge = !description.empty();
  if (Peer()) static_cast<display::ToolButtonPeer*>(Peer())->SetBadge(fHasBadge);
}

TSeparatorButton::TSeparatorButton(BRect frame) : BView(frame, "Separator") {}

std::shared_ptr<display::ViewPeer> TSeparatorButton::MakePeer() {
  return display::make_separator_peer(BMessenger(this));
}
