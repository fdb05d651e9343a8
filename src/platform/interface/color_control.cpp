#include "platform/interface/color_control.h"

#include "platform/interface/control_peer.h"

#include <cstdio>

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

std::shared_ptr<display::ControlPeer> BColorControl::MakeControl() {
  return display::make_color_peer(BMessenger(this));
}

void BColorControl::SetLabel(const char* label) {
  BControl::SetLabel(label);
  SetAccessibleName(label);
}

void BColorControl::SetValue(int32 value) {
  BControl::SetValue(value);
  SetAccessibleDescription(spoken(ValueAsColor()));
}

void BColorControl::SetValue(rgb_color color) {
  SetValue(packed(color));
}

rgb_color BColorControl::ValueAsColor() const {
  const auto value = static_cast<uint32>(Value());
  return {static_cast<uint8>(value >> 24), static_cast<uint8>(value >> 16), static_cast<uint8>(value >> 8), 255};
}

void BColorControl::ValueChosen(int32 value) {
  if (value == Value()) return;
  SetValue(value);
  Invoke();
}
