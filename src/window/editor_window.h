#pragma once

#include "toolkit/krv_win.h"
#include "window/editor_menus.h"
#include "window/host_follower.h"

#include <memory>

class BMenuBar;
class TEditorPanels;
class TFindBar;
class TNoticeBar;
class TRecentFiles;
class TToolBar;
class TToolButton;
class TVesmoEView;

/** The editor's window: menu bar, tool bar, notices, recent files, editor view and file panels. Follows the player's
    window. Owned by the manager. */
class TVesmoEWin : public TKRVWin {
public:
  TVesmoEWin(BRect frame, BLooper* manager);
  ~TVesmoEWin() override;

  void MessageReceived(BMessage* message) override;
  bool QuitRequested() override;
  /** Records the window's state and notifies the manager. */
  void Quit() override;
  void FrameMoved(BPoint leftTop) override;

  struct TBarButton {
    const char* name; // of its image, too
    TCommandId command;
    bool beginsGroup = false;
  };

private:
  // editor_window.cpp
  void CreateMenu();
  void SetLabels();
  void UpdateModeComposRqtd(const BMessage& message);
  void MarkMode(int32 mode);
  void HistoryChanged(const BMessage& message);
  void ModifiedChanged(const BMessage& message);
  void MarkSaveButton();
  void FindRqtd(const BMessage& message);
  void ViewChoicesChanged(const BMessage& message);
  void UpdateWinPosDiffe();
  void PrefStayOnTopChanged();
  void IAPChanged();

  // editor_tool_bar.cpp
  void CreateToolBar();
  void AddButton(const TBarButton& button);
  void SetToolTip();
  void PressModeButton(int32 mode);
  void UpdateToolBarCompos();
  void PrefToolBarChanged();

  BLooper* const fManager;
  BMenuBar* fMenuBar; // fMenuBar to fEditorView are children
  TToolBar* fToolBar;
  TNoticeBar* fNoticeBar;
  TFindBar* fFindBar;
  TVesmoEView* fEditorView;
  std::unique_ptr<TEditorMenus> fMenus;
  std::unique_ptr<TRecentFiles> fRecent;
  std::unique_ptr<TEditorPanels> fPanels;
  bool fShowsToolBar = true;
  bool fIsModified = false;                // as last reported by the editor view
  TToolButton* fFirstModeButton = nullptr; // the other modes' buttons follow it in the tool bar
  std::unique_ptr<THostFollower> fFollower;
  int32 fFilesTaken = 0; // files that the manager sent to be opened
};
