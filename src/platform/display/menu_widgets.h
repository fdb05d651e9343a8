#pragma once

#include "platform/interface/menu_peer.h"

#include <QMenu>
#include <QMenuBar>

namespace display {

/** A menu whose unfolding items can be chosen by a click too, where they have a message. The Alt key, which may give a
    choice another meaning, leaves it open; F10, which opens it, closes it again. */
class ChoosableMenu : public QMenu {
public:
  using QMenu::QMenu;

protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
};

/** The menu bar of a window: shows the entries it was given and tells the view which one was chosen. F10 enters it. */
class MenuRow : public QMenuBar {
public:
  explicit MenuRow(const BMessenger& view);
  /** Changes the menus in place where only labels, marks and the like are new, so that an open menu stays open. */
  void SetMenus(const std::vector<MenuEntry>& menus);

private:
  void EnterByKeyboard();
  void Fill(QWidget* menu, const std::vector<MenuEntry>& entries);
  QAction* Make(QWidget* menu, const MenuEntry& entry);
  void Tell(int32 id) const;

  BMessenger fView;
  std::vector<MenuEntry> fMenus;
};

} // namespace display
