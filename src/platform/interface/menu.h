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

  BMenuItem* ItemAt(int32 index) const;
  int32 CountItems() const { return static_cast<int32>(fItems.size()); }
  int32 IndexOf(const BMenuItem* item) const;
  /** Searches submenus too. */
  BMenuItem* FindItem(uint32 command) const;
  BMenuItem* FindMarked() const;

  /** In radio mode marking one item unmarks the others, and choosing marks. */
  void SetRadioMode(bool radio);
  bool IsRadioMode() const { return fRadioMode; }

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
