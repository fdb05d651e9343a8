#include "platform/interface/menu_peer.h"

#include "platform/display/known_value.h"
#include "platform/display/menu_widgets.h"

namespace display {

MenuPeer::MenuPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, [view]() -> QWidget* { return new MenuRow(view); }) {}

void MenuPeer::SetMenus(std::vector<MenuEntry> menus) {
  Change([menus = std::move(menus)](QWidget* widget) { static_cast<MenuRow*>(widget)->SetMenus(menus); });
}

namespace {

KnownValue<float>& bar_height() {
  static auto* const height = new KnownValue<float>; // never destroyed: threads may outlive main
  return *height;
}

} // namespace

float menu_bar_height() {
  return bar_height().Get();
}

void learn_menu_bar_height() {
  QMenuBar sample;
  sample.addMenu(QStringLiteral("X"));
  bar_height().Learn(static_cast<float>(sample.sizeHint().height()));
}

} // namespace display
