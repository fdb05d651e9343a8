#include "platform/interface/pixel_view.h"

#include "platform/app/message.h"
#include "platform/interface/pixel_peer.h"

#include <utility>

BPixelView::BPixelView(BRect frame, const char* name, uint32 resizingMode)
    : BView(frame, name, resizingMode, B_FRAME_EVENTS | B_NAVIGABLE) {}

std::shared_ptr<display::ViewPeer> BPixelView::MakePeer() {
  return std::make_shared<display::PixelPeer>(BMessenger(this));
}

display::PixelPeer* BPixelView::Pixels() const {
  return static_cast<display::PixelPeer*>(Peer());
}

void BPixelView::SetPixels(pixel_image image) {
  const bool isWhole = image.width > 0 && image.height > 0 &&
                       image.pixels.size() == static_cast<size_t>(image.width) * static_cast<size_t>(image.height);
  if (Pixels() && isWhole) Pixels()->SetPixels(std::move(image));
}

void BPixelView::SetOverlay(BPicture overlay) {
  if (Pixels()) Pixels()->SetPicture(std::move(overlay));
}

void BPixelView::SetLine(std::optional<float> x, rgb_color color) {
  if (Pixels()) Pixels()->SetLine(x, color);
}

void BPixelView::SetHandles(std::vector<float> xs) {
  if (Pixels()) Pixels()->SetHandles(std::move(xs));
}

void BPixelView::MessageReceived(BMessage* message) {
  switch (message->what) {
  case display::DISPLAY_MOUSE:
    return MouseUsed(*message);
  case display::DISPLAY_SCALE_CHANGED:
    if (message->FindFloat("scale", &fScale) == B_OK) ScaleChanged();
    return;
  default:
    return BView::MessageReceived(message);
  }
}

void BPixelView::MouseUsed(const BMessage& event) {
  int32 action = 0;
  BPoint where;
  if (event.FindInt32("action", &action) != B_OK || event.FindFloat("x", &where.x) != B_OK ||
      event.FindFloat("y", &where.y) != B_OK)
    return;
  const auto modifiers = static_cast<uint32>(event.GetInt32("modifiers"));
  const float steps = event.GetFloat("steps");
  switch (static_cast<display::MouseAction>(action)) {
  case display::MouseAction::kDown:
    return MouseDown(where, modifiers);
  case display::MouseAction::kDoubled:
    return MouseDoubled(where, modifiers);
  case display::MouseAction::kDragged:
    return MouseDragged(where, modifiers);
  case display::MouseAction::kUp:
    return MouseUp(where, modifiers);
  case display::MouseAction::kWheel:
    return WheelTurned(where, steps, modifiers);
  }
}
