#pragma once

#include "platform/interface/menu_peer.h"

#include <QMenu>
#include <QMenuBar>

namespace display {

/** A menu in which items with a submenu and a message can be clicked as well. Alt, which may modify a choice, leaves it
    open; F10, which opens it, also closes it. */
class ChoosableMenu : public QMenu {
public:
  using QMenu::QMenu;

protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
};

/** The menu bar of a window: shows the given entries and reports to the view which one was chosen. F10 opens it. */
class MenuRow : public QMenuBar {
public:
  explicit MenuRow(const BMessenger& view);
  /** Updates the menus in place if only labels, marks and the like differ, so that an open menu stays open. */
  void SetMenus(const std::vector<MenuEntry>& menus);

private:
  void OpenByKeyboard();
  void Fill(QWidget* menu, const std::vector<MenuEntry>& entries);
  QAction* Make(QWidget* menu, const MenuEntry& entry);
  void Report(int32 id) const;

  BMessenger fView;
  std::vector<MenuEntry> fMenus;
};

} // namespace display
