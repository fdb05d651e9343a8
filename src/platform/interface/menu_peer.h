#pragma once

#include "platform/interface/view_peer.h"

#include <string>
#include <vector>

namespace display {

/** One menu item, as sent to the display. */
struct MenuEntry {
  int32 id = 0;
  std::string label;
  char shortcut = 0;
  uint32 modifiers = 0;
  /** In portable notation, instead of the shortcut. */
  std::string keys;
  /** The keys are shown, but work elsewhere. */
  bool showsKeysOnly = false;
  bool isSeparator = false;
  bool isEnabled = true;
  bool isMarked = false;
  /** The menu is in radio mode. */
  bool isRadio = false;
  bool hasSubmenu = false;
  /** With hasSubmenu: the item can also be chosen itself. */
  bool hasMessage = false;
  std::vector<MenuEntry> submenu;

  friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

/** Thread-safe handle to a menu bar widget. */
class MenuPeer : public ViewPeer {
public:
  explicit MenuPeer(const BMessenger& view);
  void SetMenus(std::vector<MenuEntry> menus);
};

/** Preferred height of a menu bar. Blocks until the display has started. */
float menu_bar_height();
/** Called once as the display starts, on its thread. */
void learn_menu_bar_height();

} // namespace display
