#include "platform/display/menu_peer.h"

#include "platform/display/display_thread.h"
#include "platform/display/menu_widgets.h"

#include <atomic>

namespace display {

MenuPeer::MenuPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, [view]() -> QWidget* { return new MenuRow(view); }) {}

void MenuPeer::SetMenus(std::vector<MenuEntry> menus) {
  Change([menus = std::move(menus)](QWidget* widget) { static_cast<MenuRow*>(widget)->SetMenus(menus); });
}

float menu_bar_height() {
  static std::atomic<float> known{0};
  if (known > 0) return known;
  known = call([] {
    QMenuBar sample;
    sample.setNativeMenuBar(false);
    // A bar hides titles that do not fit into it, and Japanese ones are higher.
    sample.addMenu(QString::fromUtf16(u"Xg\u6f22"));
    return static_cast<float>(sample.sizeHint().height());
  });
  return known;
}

} // namespace display
