#include "platform/interface/color_control.h"

#include "platform/interface/color_peer.h"

#include <cstdio>

using display::ColorPeer;

namespace {

int32 packed(rgb_color color) {
  return static_cast<int32>(static_cast<uint32>(color.red) << 24 | static_cast<uint32>(color.green) << 16 |
                            static_cast<uint32>(color.blue) << 8);
}

std::string spoken(rgb_color color) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", color.red, color.green, color.blue);
  return text;
}

} // namespace

BColorControl::BColorControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode)
    : BControl(frame, name, label, message, resizingMode) {
  SetAccessibleName(label);
}

std::shared_ptr<display::ViewPeer> BColorControl::MakePeer() {
  auto peer = std::make_shared<ColorPeer>(BMessenger(this));
  peer->SetTitle(Label());
  peer->SetShown(ValueAsColor());
  peer->SetEnabled(IsEnabled());
  return peer;
}

void BColorControl::SetLabel(const char* label) {
  BControl::SetLabel(label);
  SetAccessibleName(label);
  if (Peer()) static_cast<ColorPeer*>(Peer())->SetTitle(label);
}

void BColorControl::SetValue(int32 value) {
  BControl::SetValue(value);
  SetAccessibleDescription(spoken(ValueAsColor()));
  if (Peer()) static_cast<ColorPeer*>(Peer())->SetShown(ValueAsColor());
}

void BColorControl::SetValue(rgb_color color) {
  SetValue(packed(color));
}

rgb_color BColorControl::ValueAsColor() const {
  const auto value = static_cast<uint32>(Value());
  return {static_cast<uint8>(value >> 24), static_cast<uint8>(value >> 16), static_cast<uint8>(value >> 8), 255};
}

void BColorControl::MessageReceived(BMessage* message) {
  int32 value = 0;
  if (message->what != display::DISPLAY_VALUE_CHOSEN) return BControl::MessageReceived(message);
  if (message->FindInt32("value", &value) != B_OK || value == Value()) return;
  SetValue(value);
  Invoke();
}
