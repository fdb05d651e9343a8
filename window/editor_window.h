#pragma once

#include "platform/interface/window.h"

#include <memory>
#include <string>

class BFilePanel;
class BMenu;
class BMenuBar;
class BMenuItem;
class TVesmoESavePanel;
class TVesmoEView;
class TWMFilter;

inline constexpr uint32 kMsgOpenPanel = '_opn';

/** The editor's window: menu bar, editor view, file panels. Follows the player's window. Owned by the manager. */
class TVesmoEWin : public BWindow {
public:
  TVesmoEWin(BRect frame, BLooper* manager);
  ~TVesmoEWin() override;

  void MessageReceived(BMessage* message) override;
  bool QuitRequested() override;
  /** Tells the manager and records the window's state. */
  void Quit() override;
  void FrameMoved(BPoint leftTop) override;

private:
  // editor_menus.cpp
  void CreateMenu();
  BMenu* MakeFileMenu();
  BMenu* MakeModeMenu();
  BMenu* MakeHelpMenu();
  BMenuItem* MakeItem(const char* key, const char* letter, uint32 code, char shortcut, BHandler* target);
  BMenuItem* MakeModeItem(const char* key, const char* letter, char shortcut, int32 mode);
  void SetLabels();
  void UpdateModeComposRqtd(const BMessage& message);
  void MarkMode(int32 mode);

  // editor_window.cpp
  void FollowHost();
  void UpdateWinPosDiffe();
  void InstallMoveFilter();
  void RemoveMoveFilter();
  void PrefStayOnTopChanged();
  void IAPChanged(const BMessage& message);

  // editor_panels.cpp
  void MItemOpenClicked();
  void MItemSaveAsClicked(const BMessage& message);
  void SetOpenPanelLabel();
  void SetSavePanelLabel();
  void PanelClosed(const BMessage& message);
  void RememberPanelFolder(const BFilePanel& panel);
  std::string PanelFolder() const;

  BLooper* const fManager;
  std::unique_ptr<TVesmoESavePanel> fSavePanel; // made at first use, as the next
  std::unique_ptr<BFilePanel> fOpenPanel;
  BMenuBar* fMenuBar;               // a child
  BMenuItem* fModeItems[2] = {};    // in the menu bar
  TVesmoEView* fEditorView;         // a child
  BPoint fPositionDifference;       // this window's left top less the player's
  TWMFilter* fMoveFilter = nullptr; // owned by the player's window
  BMessenger fHostWindow;
};
