#pragma once

#include "platform/app/messenger.h"

#include <memory>
#include <string>

class BHandler;
class BMenu;
class BMenuBar;
class BMessage;

/** One line of a menu. Owned by its menu, and owns its message and its submenu. On the window's thread, or with the
 * window locked. */
class BMenuItem {
public:
  /** A shortcut of 0 is none; every shortcut has the Command modifier, `modifiers` adds to it. */
  BMenuItem(const char* label, BMessage* message, char shortcut = 0, uint32 modifiers = 0);
  /** An item that unfolds; with a message it can be chosen by itself too (clicked, or by its shortcut). */
  explicit BMenuItem(BMenu* submenu, BMessage* message = nullptr, char shortcut = 0, uint32 modifiers = 0);
  BMenuItem(const BMenuItem&) = delete;
  BMenuItem& operator=(const BMenuItem&) = delete;
  virtual ~BMenuItem();

  const char* Label() const;
  void SetEnabled(bool enabled);
  bool IsEnabled() const { return fEnabled; }
  void SetMarked(bool marked);
  bool IsMarked() const { return fMarked; }
  char Shortcut() const { return fShortcut; }
  uint32 ShortcutModifiers() const { return fModifiers; }
  BMessage* Message() const { return fMessage.get(); }
  /** Without a target the message goes to the window. */
  void SetTarget(const BMessenger& target) { fTarget = target; }
  void SetTarget(const BHandler* handler);
  BMenu* Submenu() const { return fSubmenu.get(); }
  BMenu* Menu() const { return fMenu; }

  /** What choosing the item does: sends a copy of its message (with pointer "source", int32 "index", int64 "when"). */
  virtual void Invoke();

  virtual bool IsSeparator() const { return false; }

private:
  friend class BMenu;
  void Changed() const;

  std::string fLabel;
  std::unique_ptr<BMessage> fMessage;
  std::unique_ptr<BMenu> fSubmenu;
  char fShortcut;
  uint32 fModifiers;
  bool fEnabled = true;
  bool fMarked = false;
  /** Names the item to the display; never used twice. */
  int32 fId;
  BMessenger fTarget;
  BMenu* fMenu = nullptr;
};

class BSeparatorItem : public BMenuItem {
public:
  BSeparatorItem() : BMenuItem("", nullptr) {}
  bool IsSeparator() const override { return true; }
};
