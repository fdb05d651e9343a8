#pragma once

#include "editviews/edit_mode.h"

class BHandler;
class BMenu;
class BMenuBar;
class BMenuItem;

/** The editor window's menus. Every label is a language text with its accelerator letter. Owned by the window, on its
    thread; the menu bar owns menus and items. */
class TEditorMenus {
public:
  /** Handlers that the items send their messages to; not owned. */
  struct TTargets {
    BHandler* window;
    BHandler* view;
    BHandler* manager;
  };

  TEditorMenus(BMenuBar* bar, const TTargets& targets) : fBar(bar), fTargets(targets) {}

  /** Replaces all menus by new ones in the current language. */
  void Build();
  /** The submenu that lists the recent files. */
  BMenu* OpenMenu() const { return fOpenMenu; }
  /** Marks none for a number of no mode. */
  void MarkMode(int32 mode);
  void EnableHistory(bool canUndo, bool canRedo);

private:
  BMenu* MakeFileMenu();
  BMenuItem* MakeOpenSubmenu();
  BMenu* MakeEditMenu();
  BMenu* MakeModeMenu();
  BMenu* MakeToolMenu();
  BMenu* MakeHelpMenu();
  BMenuItem* MakeConvertItem(const char* key, const char* letter, bool toExtended);
  BMenuItem* MakeModeItem(const char* key, const char* letter, char shortcut, TEditMode mode);

  BMenuBar* const fBar;
  const TTargets fTargets;
  BMenuItem* fModeItems[kEditModes] = {}; // fModeItems to fOpenMenu: in the menu bar
  BMenuItem* fUndoItem = nullptr;
  BMenuItem* fRedoItem = nullptr;
  BMenu* fOpenMenu = nullptr;
  bool fCanUndo = false;
  bool fCanRedo = false;
};
