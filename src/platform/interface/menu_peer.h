#pragma once

#include "platform/interface/view_peer.h"

#include <string>
#include <vector>

namespace display {

/** One line of a menu, as handed to the display. */
struct MenuEntry {
  int32 id = 0;
  std::string label;
  char shortcut = 0;
  uint32 modifiers = 0;
  bool isSeparator = false;
  bool isEnabled = true;
  bool isMarked = false;
  /** Its menu marks one of its items. */
  bool isRadio = false;
  bool hasSubmenu = false;
  /** An unfolding item that can be chosen by itself. */
  bool hasMessage = false;
  std::vector<MenuEntry> submenu;

  friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

/** The program's hand on a menu bar. */
class MenuPeer : public ViewPeer {
public:
  explicit MenuPeer(const BMessenger& view);
  void SetMenus(std::vector<MenuEntry> menus);
};

/** The height that a menu bar wants. Waits for the display to start. */
float menu_bar_height();
/** As the display starts, on its thread. */
void learn_menu_bar_height();

} // namespace display
