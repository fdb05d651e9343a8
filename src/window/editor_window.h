#pragma once

#include "toolkit/krv_win.h"
#include "window/followed_distance.h"
#include "window/mruf.h"

#include <memory>
#include <string>

class BFilePanel;
class BMenu;
class BMenuBar;
class BMenuItem;
class TExportPanel;
class TToolBar;
class TToolButton;
class TVesmoESavePanel;
class TVesmoEView;
class TWMFilter;

enum : uint32 {
  kMsgOpenPanel = '_opn',
  kMsgExport = '_exp',
  kMsgClearHistory = '_dam', // asks before it forgets the recent files
};

/** The editor's window: menu bar, tool bar, editor view, file panels. Follows the player's window. Owned by the
 * manager. */
class TVesmoEWin : public TKRVWin {
public:
  TVesmoEWin(BRect frame, BLooper* manager);
  ~TVesmoEWin() override;

  void MessageReceived(BMessage* message) override;
  bool QuitRequested() override;
  /** Tells the manager and records the window's state. */
  void Quit() override;
  void FrameMoved(BPoint leftTop) override;

private:
  static constexpr int32 kModeCount = 3;

  // editor_menus.cpp
  void CreateMenu();
  BMenu* MakeFileMenu();
  BMenuItem* MakeOpenSubmenu();
  BMenu* MakeEditMenu();
  BMenu* MakeModeMenu();
  BMenu* MakeToolMenu();
  BMenu* MakeHelpMenu();
  BMenuItem* MakeItem(const char* key, const char* letter, uint32 code, char shortcut, BHandler* target,
                      uint32 modifiers = 0);
  BMenuItem* MakeConvertItem(const char* key, const char* letter, bool toExtended);
  BMenuItem* MakeModeItem(const char* key, const char* letter, char shortcut, int32 mode);
  void SetLabels();
  void UpdateModeComposRqtd(const BMessage& message);
  void MarkMode(int32 mode);
  void HistoryChanged(const BMessage& message);
  void EnableHistoryItems();

  // editor_recent.cpp
  void LoadMRUF();
  void GenerateMenuMRUF();
  void AddHistoryRqtd(const BMessage& message);
  void RemoveHistoryRqtd(const BMessage& message);
  void MItemDelAllMRUFClicked();

  // editor_tool_bar.cpp
  void CreateToolBar();
  void AddButton(const char* name, uint32 code, BHandler* target, int32 mode = -1);
  void SetToolTip();
  void PressModeButton(int32 mode);
  void UpdateToolBarCompos();
  void PrefToolBarChanged();

  // editor_window.cpp
  void FollowHost();
  void UpdateWinPosDiffe();
  void InstallMoveFilter();
  void RemoveMoveFilter();
  void PrefStayOnTopChanged();
  void IAPChanged();

  // editor_panels.cpp
  void MItemOpenClicked();
  void MItemSaveAsClicked(const BMessage& message);
  void MItemExportClicked();
  void SetOpenPanelLabel();
  void SetSavePanelLabel();
  void PanelClosed(const BMessage& message);
  /** The folder that a panel shows, and that is kept for the next time. */
  void SetOpenPanelFolder(const std::string& folder);
  void SetSavePanelFolder(const std::string& folder);
  void SetSavePanelFileName();
  void RememberPanelFolders() const;
  std::string PanelFolder() const;
  std::string DocumentName() const;

  BLooper* const fManager;
  std::unique_ptr<TVesmoESavePanel> fSavePanel; // made at first use, as the next
  std::unique_ptr<BFilePanel> fOpenPanel;
  std::unique_ptr<TExportPanel> fExportPanel; // made anew for each export
  BMenuBar* fMenuBar;                         // a child
  BMenuItem* fModeItems[kModeCount] = {};     // in the menu bar, as the next three
  BMenuItem* fUndoItem = nullptr;
  BMenuItem* fRedoItem = nullptr;
  BMenu* fOpenMenu = nullptr; // the recent files unfold from it
  TMRUF fMRUF;
  bool fShowsToolBar = true;
  bool fCanUndo = false;
  bool fCanRedo = false;
  TToolBar* fToolBar;                      // a child
  TToolButton* fFirstModeButton = nullptr; // the next two are those of the other modes
  TVesmoEView* fEditorView;                // a child
  TFollowedDistance fPositionDifference;
  TWMFilter* fMoveFilter = nullptr; // owned by the player's window
  BMessenger fHostWindow;
  int32 fFilesTaken = 0; // that the manager sent to be opened
};
