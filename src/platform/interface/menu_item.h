#pragma once

#include "platform/app/messenger.h"

#include <memory>
#include <string>

class BHandler;
class BMenu;
class BMenuBar;
class BMessage;

/** One item of a menu, which owns it. Owns its message and submenu. To be used with the window locked. */
class BMenuItem {
public:
  /** Shortcut 0 is none; every shortcut has the Command modifier, `modifiers` are additional ones. */
  BMenuItem(const char* label, BMessage* message, char shortcut = 0, uint32 modifiers = 0);
  /** An item with a submenu; with a message it can also be chosen itself, by a click or its shortcut. */
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
  /** Keys in Qt's portable notation, such as "Ctrl+Shift+M" or "F8", instead of a shortcut. Keys that are only shown
     work elsewhere, in the view with the focus. */
  void SetKeys(const std::string& keys, bool areOnlyShown = false);
  const std::string& Keys() const { return fKeys; }
  bool AreKeysOnlyShown() const { return fShowsKeysOnly; }
  BMessage* Message() const { return fMessage.get(); }
  /** Without a target the message goes to the window. */
  void SetTarget(const BMessenger& target) { fTarget = target; }
  void SetTarget(const BHandler* handler);
  BMenu* Submenu() const { return fSubmenu.get(); }
  BMenu* Menu() const { return fMenu; }

  /** Called when chosen: sends a copy of the message with pointer "source", int32 "index", int64 "when". */
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
  std::string fKeys;
  bool fShowsKeysOnly = false;
  bool fEnabled = true;
  bool fMarked = false;
  /** Identifies the item to the display; never reused. */
  int32 fId;
  BMessenger fTarget;
  BMenu* fMenu = nullptr;
};

class BSeparatorItem : public BMenuItem {
public:
  BSeparatorItem() : BMenuItem("", nullptr) {}
  bool IsSeparator() const override { return true; }
};
