#pragma once

#include "toolkit/krv_win.h"
#include "window/editor_menus.h"
#include "window/host_follower.h"
#include "window/mruf.h"

#include <memory>
#include <string>
#include <vector>

class BFilePanel;
class BMenuBar;
class TExportPanel;
class TFindBar;
class TNoticeBar;
class TToolBar;
class TToolButton;
class TVesmoESavePanel;
class TVesmoEView;

/** The editor's window: menu bar, tool bar, notices, editor view and file panels. Follows the player's window. Owned by
   the manager. */
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

  // editor_recent.cpp
  void LoadMRUF();
  void GenerateMenuMRUF();
  void SaveMRUF();
  void AddHistoryRqtd(const BMessage& message);
  void RemoveHistoryRqtd(const BMessage& message);
  void MItemDelAllMRUFClicked();

  // editor_tool_bar.cpp
  void CreateToolBar();
  void AddButton(const TBarButton& button);
  void SetToolTip();
  void PressModeButton(int32 mode);
  void UpdateToolBarCompos();
  void PrefToolBarChanged();

  // editor_panels.cpp
  void MItemOpenClicked();
  void MItemSaveAsClicked(const BMessage& message);
  void MItemExportClicked();
  void SetOpenPanelLabel();
  void SetSavePanelLabel();
  void PanelClosed(const BMessage& message);
  /** The lyrics of the playing song do not open under a panel. */
  void OfferSongLyrics(const BMessage& offer);
  /** The folder that a panel shows, which is stored for the next time. */
  void SetOpenPanelFolder(const std::string& folder);
  void SetSavePanelFolder(const std::string& folder);
  void SetSavePanelFileName();
  void RememberPanelFolders() const;
  std::string PanelFolder() const;
  /** Folders that the panels list at their side. */
  std::vector<std::string> Places() const;
  std::string DocumentName() const;

  BLooper* const fManager;
  std::unique_ptr<TVesmoESavePanel> fSavePanel; // fSavePanel and fOpenPanel: created at first use
  std::unique_ptr<BFilePanel> fOpenPanel;
  std::unique_ptr<TExportPanel> fExportPanel; // a new one for each export
  BMenuBar* fMenuBar;                         // fMenuBar to fEditorView are children
  TToolBar* fToolBar;
  TNoticeBar* fNoticeBar;
  TFindBar* fFindBar;
  TVesmoEView* fEditorView;
  std::unique_ptr<TEditorMenus> fMenus;
  TMRUF fMRUF;
  bool fIsMRUFSaved = true;
  bool fShowsToolBar = true;
  bool fIsModified = false;                // as last reported by the editor view
  TToolButton* fFirstModeButton = nullptr; // the other modes' buttons follow it in the tool bar
  std::unique_ptr<THostFollower> fFollower;
  int32 fFilesTaken = 0; // files that the manager sent to be opened
};
