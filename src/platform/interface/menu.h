#pragma once

#include "platform/interface/menu_item.h"
#include "platform/interface/view.h"

#include <memory>
#include <string>
#include <vector>

namespace display {
struct MenuEntry;
}

/** A titled list of items, which it owns until they are removed. Shown by the menu bar at its root, which sends the
    whole tree to the display after a change. */
class BMenu : public BView {
public:
  explicit BMenu(const char* title);
  ~BMenu() override;

  /** Takes ownership of the item. */
  bool AddItem(BMenuItem* item);
  bool AddItem(BMenuItem* item, int32 index);
  /** Adds the submenu with an item made for it. */
  bool AddItem(BMenu* submenu);
  bool AddItem(BMenu* submenu, int32 index);
  bool AddSeparatorItem();
  /** Passes ownership of the item to the caller; null for an index outside the menu. */
  BMenuItem* RemoveItem(int32 index);

  BMenuItem* ItemAt(int32 index) const;
  int32 CountItems() const { return static_cast<int32>(fItems.size()); }
  int32 IndexOf(const BMenuItem* item) const;
  /** The first item with that command, submenus included; null if none. */
  BMenuItem* FindItem(uint32 command) const;
  BMenuItem* FindMarked() const;

  /** In radio mode choosing an item marks it, and marking one unmarks the others. */
  void SetRadioMode(bool radio);
  bool IsRadioMode() const { return fRadioMode; }

  void SetTitle(const char* title);
  const char* Title() const { return fTitle.c_str(); }
  BMenu* Supermenu() const;

protected:
  friend class BMenuItem;
  friend class BMenuBar;
  /** Notifies the menu bar at the root, if there is one. */
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
  BMenuItem* fSuperitem = nullptr; // the item that opens it; null for a menu bar
  std::vector<std::unique_ptr<BMenuItem>> fItems;
};
