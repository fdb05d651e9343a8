#pragma once

#include "platform/interface/menu_item.h"
#include "platform/interface/view.h"

#include <memory>
#include <string>
#include <vector>

namespace display {
struct MenuEntry;
}

/** A titled list of items; owns them until they are removed. Shown by the menu bar it hangs from, which hands the
    whole tree to the display after a change. */
class BMenu : public BView {
public:
  explicit BMenu(const char* title);
  ~BMenu() override;

  /** The menu owns the item. */
  bool AddItem(BMenuItem* item);
  bool AddItem(BMenuItem* item, int32 index);
  /** A submenu, and the item made for it. */
  bool AddItem(BMenu* submenu);
  bool AddItem(BMenu* submenu, int32 index);
  bool AddSeparatorItem();
  /** The caller owns the removed item; null outside the menu. */
  BMenuItem* RemoveItem(int32 index);
  bool RemoveItem(BMenuItem* item);
  /** Removes the item made for the submenu; the item stays with the caller, and the submenu with the item. */
  bool RemoveItem(BMenu* submenu);

  BMenuItem* ItemAt(int32 index) const;
  int32 CountItems() const { return static_cast<int32>(fItems.size()); }
  int32 IndexOf(const BMenuItem* item) const;
  int32 IndexOf(const BMenu* submenu) const;
  /** Searches submenus too. */
  BMenuItem* FindItem(const char* label) const;
  BMenuItem* FindItem(uint32 command) const;
  BMenuItem* FindMarked() const;

  /** In radio mode marking one item unmarks the others, and choosing marks. */
  void SetRadioMode(bool radio);
  bool IsRadioMode() const { return fRadioMode; }
  /** Aims every item that is there now; submenus not. */
  void SetTargetForItems(const BMessenger& target);
  void SetTargetForItems(const BHandler* handler);

  void SetTitle(const char* title);
  const char* Title() const { return fTitle.c_str(); }
  BMenu* Supermenu() const;

protected:
  friend class BMenuItem;
  friend class BMenuBar;
  /** Tells the menu bar at the root, if there is one. */
  virtual void Changed();
  std::vector<display::MenuEntry> Snapshot() const;
  BMenuItem* FindById(int32 id) const;
  /** The first item that fits, submenus included. */
  template <class Wanted>
  BMenuItem* Find(const Wanted& wanted) const;
  void MarkOnly(const BMenuItem* item);
  virtual BWindow* RootWindow() const;

private:
  void Insert(std::unique_ptr<BMenuItem> item, int32 index);

  std::string fTitle;
  bool fRadioMode = false;
  BMenuItem* fSuperitem = nullptr; // that it unfolds from; null for a menu bar
  std::vector<std::unique_ptr<BMenuItem>> fItems;
};
