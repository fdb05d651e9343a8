#pragma once

#include "commands/command_table.h"
#include "editviews/edit_mode.h"

#include <array>
#include <map>
#include <memory>

class BHandler;
class BMenu;
class BMenuBar;
class BMenuItem;

class TKeys;

/** The editor window's menus: the commands of the table with their current keys. Every label is a language text with
   its accelerator letter. Owned by the window, on its thread; the menu bar owns menus and items. */
class TEditorMenus {
public:
  /** Handlers that the items send their messages to; not owned. */
  struct TTargets {
    BHandler* window;
    BHandler* view;
    BHandler* manager;
  };

  TEditorMenus(BMenuBar* bar, const TTargets& targets) : fBar(bar), fTargets(targets) {}

  /** Replaces all menus by new ones, in the current language and with the current keys. */
  void Build();
  /** The handler of the command's message. */
  BHandler* Target(TCommandId id) const;
  /** The command's item; null if no menu has it. */
  BMenuItem* Item(TCommandId id) const { return fItems[static_cast<size_t>(id)]; }
  /** The submenu that lists the recent files. */
  BMenu* OpenMenu() const { return fOpenMenu; }
  /** Marks none for a number of no mode. */
  void MarkMode(int32 mode);
  /** A command that is switched on or off; also after the menus are built again. */
  void Mark(TCommandId id, bool isOn);
  void EnableHistory(bool canUndo, bool canRedo);

private:
  BMenu* MakeReopenMenu();
  BMenu* MakeFileMenu();
  BMenuItem* MakeOpenSubmenu();
  BMenu* MakeEditMenu();
  BMenuItem* MakeLinesMenu();
  BMenu* MakeWordsMenu();
  BMenu* MakeListenMenu();
  BMenu* MakeModeMenu();
  BMenu* MakeGoMenu();
  BMenu* MakeToolMenu();
  BMenu* MakeHelpMenu();
  BMenuItem* MakeItem(TCommandId id);
  /** The item of a command that opens a submenu, too. */
  BMenuItem* MakeItem(TCommandId id, BMenu* submenu);
  BMenuItem* Adopt(TCommandId id, BMenuItem* item);

  BMenuBar* const fBar;
  const TTargets fTargets;
  std::shared_ptr<const TKeys> fKeys;            // as last built
  std::array<BMenuItem*, kCommands> fItems = {}; // in the menu bar, like fOpenMenu
  BMenuItem* fLinesItem = nullptr;
  BMenu* fOpenMenu = nullptr;
  std::map<TCommandId, bool> fMarks;
  bool fCanUndo = false;
  bool fCanRedo = false;
};
