#include "platform/interface/color_peer.h"

#include "platform/display/color_button.h"
#include "platform/display/convert.h"

namespace display {

namespace {

ColorButton& button(QWidget* widget) {
  return *static_cast<ColorButton*>(widget);
}

} // namespace

ColorPeer::ColorPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, [view]() -> QWidget* { return new ColorButton(view); }) {}

void ColorPeer::SetShown(rgb_color color) {
  Change([color](QWidget* widget) { button(widget).Show(to_qcolor(color)); });
}

void ColorPeer::SetTitle(const std::string& title) {
  Change([title](QWidget* widget) { button(widget).SetTitle(to_qstring(title)); });
}

} // namespace display
