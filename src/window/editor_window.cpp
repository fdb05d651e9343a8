#include "window/editor_window.h"

#include "common/app_info.h"
#include "document/editor_view.h"
#include "family/message_filters.h"
#include "hostlink/sonivo_window.h"
#include "lyrics/document_notices.h"
#include "lyrics/reaction_time.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/interface/file_panel.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/screen.h"
#include "plugin/exit_state.h"
#include "plugin/pref.h"
#include "toolkit/placement.h"
#include "toolkit/tool_bar.h"
#include "window/export_panel.h"
#include "window/save_panel.h"

namespace {

constexpr float kFirstWidth = 560;
constexpr float kFirstHeight = 400;
constexpr float kMenuBarHeight = 22;

/** The stored frame; on a first run, when none was stored, and when its screen is there no more, one of a useful size
    beside the player. */
BRect opening_frame(const BRect& stored) {
  const BRect first = TExitState().fWindowFrame;
  if (!(stored == first) && is_in_sight(stored)) return stored;
  BRect host;
  if (get_sonivo_win_frame(&host) != B_OK) return first;
  return frame_beside(host, kFirstWidth, kFirstHeight, screen_frame(host.LeftTop()));
}

window_feel proper_feel() {
  return gPref->Values()->stayOnTop ? B_FLOATING_ALL_WINDOW_FEEL : B_NORMAL_WINDOW_FEEL;
}

void set_proper_feel(BWindow* window) {
  window->SetFeel(proper_feel());
}

} // namespace

TVesmoEWin::TVesmoEWin(BRect frame, BLooper* manager)
    : TKRVWin(opening_frame(frame), gAppName, B_DOCUMENT_WINDOW_LOOK, proper_feel()), fManager(manager) {
  BRect bar = Bounds();
  bar.bottom = bar.top + kMenuBarHeight;
  fMenuBar = new BMenuBar(bar, "MenuBar", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
  AddChild(fMenuBar);
  BRect rest = Bounds();
  rest.top = fMenuBar->Frame().bottom + 1;
  fToolBar = new TToolBar(rest, "ToolBar");
  AddChild(fToolBar);
  rest.top = fToolBar->Frame().bottom + 1;
  fEditorView = new TVesmoEView(rest);
  AddMainChild(fEditorView);
  CreateMenu();
  CreateToolBar();
  SetToolTip();
  UpdateToolBarCompos();
  LoadMRUF();
  GenerateMenuMRUF();
  fEditorView->CreateNewLyrics();
  fEditorView->SetMode(static_cast<int32>(edit_mode_of(gExitState->fMode).value_or(TEditMode::kTagInputExtended)));
  fEditorView->SetWinTitle();
  InstallMoveFilter();
  UpdateWinPosDiffe();
  fEditorView->FocusLyrics();
}

TVesmoEWin::~TVesmoEWin() {
  RemoveMoveFilter();
}

void TVesmoEWin::MessageReceived(BMessage* message) {
  switch (message->what) {
  case B_REFS_RECEIVED:
    if (message->ReturnAddress() == BMessenger(fManager)) ++fFilesTaken;
    return fEditorView->MessageReceived(message);
  case B_SAVE_REQUESTED:
  case kMsgDefaultStatBar:
  case kMsgAppearance:
  case 'Sssr':
  case kMsgShiftTags:
  case kMsgExportTo:
    return fEditorView->MessageReceived(message);
  case 'Splc':
    return PrefToolBarChanged();
  case kMsgPollInterval:
    PrefStayOnTopChanged();
    return fEditorView->MessageReceived(message);
  case 'Spsc':
    return PrefStayOnTopChanged();
  case kMsgStampHint:
    fManager->PostMessage(message);
    return;
  case kMsgHostWindowMoved:
    return FollowHost();
  case B_CANCEL:
    return PanelClosed(*message);
  case kMsgOpenPanel:
    return MItemOpenClicked();
  case kMsgSaveAs:
    return MItemSaveAsClicked(*message);
  case kMsgExport:
    return MItemExportClicked();
  case kMsgExportFormat:
    if (fExportPanel) fExportPanel->ProposeName();
    return;
  case kMsgClearHistory:
    return MItemDelAllMRUFClicked();
  case kMsgAddHistory:
    return AddHistoryRqtd(*message);
  case kMsgRemoveHistory:
    return RemoveHistoryRqtd(*message);
  case kMsgHistoryChanged:
    return HistoryChanged(*message);
  case kMsgFollowDocument:
  case kMsgSave: // asked for by another's follow-up
    return fEditorView->MessageReceived(message);
  case kMsgModeChanged:
    return UpdateModeComposRqtd(*message);
  case kMsgIAPChanged:
    return IAPChanged();
  case '_lgc':
    SetToolTip();
    SetLabels();
    return fEditorView->MessageReceived(message);
  default:
    TKRVWin::MessageReceived(message);
  }
}

bool TVesmoEWin::QuitRequested() {
  // When it is the player that closes, it is to go on with that after the save.
  const BMessage* const request = CurrentMessage();
  const bool isPlayers = request && be_app && request->ReturnAddress() == BMessenger(be_app);
  const BHandler* const asker = isPlayers ? static_cast<BHandler*>(be_app) : this;
  return fEditorView->AskSave(BMessage(B_QUIT_REQUESTED), asker);
}

void TVesmoEWin::Quit() {
  gExitState->fWindowFrame = Frame();
  // The view's mode is the one whose button is pressed, but for the moment until 'umcr' has pressed it: a window that
  // the manager closes in that moment would lose the mode that the user has just chosen.
  gExitState->fMode = static_cast<int32>(fEditorView->Mode());
  RememberPanelFolders();
  // Posted after the record is complete. Once the manager has this message it waits for the window no longer: on other
  // threads the plug-in's end may write the record to the disk, and the next window read it; place and mode could be
  // lost.
  BMessage closed('mwcl');
  closed.AddMessenger("window", BMessenger(this));
  closed.AddInt32("FilesTaken", fFilesTaken);
  fManager->PostMessage(&closed);
  TKRVWin::Quit();
}

void TVesmoEWin::InstallMoveFilter() {
  use_sonivo_window([this](BWindow* host) {
    fHostWindow = BMessenger(host);
    fMoveFilter = new TWMFilter(BMessenger(this));
    host->AddCommonFilter(fMoveFilter);
  });
}

void TVesmoEWin::RemoveMoveFilter() {
  // A player's window that is gone has taken its filters along.
  if (fMoveFilter == nullptr || !fHostWindow.LockTarget()) return;
  BLooper* host = nullptr;
  fHostWindow.Target(&host);
  if (host->RemoveCommonFilter(fMoveFilter)) delete fMoveFilter;
  host->Unlock();
}

void TVesmoEWin::FollowHost() {
  BRect host;
  uint32 workspaces = 0;
  if (get_sonivo_win_frame(&host) != B_OK || get_sonivo_win_workspaces(&workspaces) != B_OK) return;
  if (workspaces == Workspaces()) MoveTo(fPositionDifference.Follow(host.LeftTop()));
}

void TVesmoEWin::UpdateWinPosDiffe() {
  BRect host;
  if (get_sonivo_win_frame(&host) == B_OK) fPositionDifference.Set(Frame().LeftTop(), host.LeftTop());
}

void TVesmoEWin::FrameMoved(BPoint leftTop) {
  TKRVWin::FrameMoved(leftTop);
  if (fPositionDifference.IsUsersMove(leftTop, MoveEnd())) UpdateWinPosDiffe();
}

void TVesmoEWin::PrefStayOnTopChanged() {
  set_proper_feel(this);
}

// Whichever preference the notice names: it may stand for those of others, with which it was coalesced.
void TVesmoEWin::IAPChanged() {
  SetLabels();
  UpdateToolBarCompos();
}
