#include "window/editor_window.h"

#include "common/app_info.h"
#include "document/editor_view.h"
#include "family/message_filters.h"
#include "hostlink/sonivo_window.h"
#include "lyrics/reaction_time.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/screen.h"
#include "plugin/exit_state.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "toolkit/placement.h"
#include "toolkit/tool_bar.h"
#include "window/editor_panels.h"
#include "window/find_bar.h"
#include "window/notice_bar.h"
#include "window/recent_files.h"

namespace {

constexpr float kFirstWidth = 560;
constexpr float kFirstHeight = 400;
constexpr float kMenuBarHeight = 22;

/** The stored frame. On a first run, or when its screen no longer exists, one of a useful size next to the player. */
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
  fNoticeBar = new TNoticeBar(rest, "NoticeBar", [this] { fEditorView->FocusLyrics(); });
  AddChild(fNoticeBar);
  fEditorView = new TVesmoEView(rest, fNoticeBar);
  fFindBar = new TFindBar(rest, "FindBar", fEditorView, [this] { fEditorView->FocusLyrics(); });
  AddChild(fFindBar);
  AddMainChild(fEditorView);
  fMenus = std::make_unique<TEditorMenus>(fMenuBar, TEditorMenus::TTargets{this, fEditorView, fManager});
  CreateMenu();
  CreateToolBar();
  SetToolTip();
  UpdateToolBarCompos();
  fRecent = std::make_unique<TRecentFiles>(this, fMenus.get(), fNoticeBar);
  fRecent->GenerateMenuMRUF();
  fPanels = std::make_unique<TEditorPanels>(this, fEditorView);
  fEditorView->CreateNewLyrics();
  fEditorView->SetMode(static_cast<int32>(edit_mode_of(gExitState->fMode).value_or(TEditMode::kTagInputExtended)));
  fEditorView->SetWinTitle();
  fFollower = std::make_unique<THostFollower>(this);
  fEditorView->FocusLyrics();
}

TVesmoEWin::~TVesmoEWin() = default;

void TVesmoEWin::MessageReceived(BMessage* message) {
  switch (message->what) {
  case B_REFS_RECEIVED:
    if (message->ReturnAddress() == BMessenger(fManager)) ++fFilesTaken;
    return fEditorView->MessageReceived(message);
  case B_SAVE_REQUESTED:
  case kMsgDefaultStatBar:
  case kMsgAppearance:
  case kMsgStatBarStr:
  case kMsgOpenSongLyrics:
  case kMsgSplitLine:
  case kMsgSeekInSong:
  case kMsgShiftTags:
  case kMsgExportTo:
    return fEditorView->MessageReceived(message);
  case kMsgToolBar:
    return PrefToolBarChanged();
  case kMsgPollInterval:
    PrefStayOnTopChanged();
    return fEditorView->MessageReceived(message);
  case kMsgStayOnTop:
    return PrefStayOnTopChanged();
  case kMsgFineTimeTag:
    message->AddInt32("Document", fEditorView->DocumentNumber());
    fManager->PostMessage(message);
    return;
  case kMsgShowFind:
  case kMsgFindNext:
    return FindRqtd(*message);
  case kMsgViewChoices:
    return ViewChoicesChanged(*message);
  case kMsgStampHint:
  case kMsgOptionsChosen:
    fManager->PostMessage(message);
    return;
  case kMsgHostWindowMoved:
    return fFollower->Follow();
  case kMsgOfferSongLyrics:
    if (!fPanels->IsOneShowing()) fManager->PostMessage(message); // lyrics do not open under a panel
    return;
  case kMsgHistoryChanged:
    return HistoryChanged(*message);
  case kMsgModifiedChanged:
    return ModifiedChanged(*message);
  case kMsgFollowDocument:
  case kMsgSave: // as the follow-up of another command
    return fEditorView->MessageReceived(message);
  case kMsgModeChanged:
    return UpdateModeComposRqtd(*message);
  case kMsgIAPChanged:
    return IAPChanged();
  case kMsgKeys:
    SetToolTip();
    SetLabels();
    return fEditorView->MessageReceived(message);
  case kMsgLanguageChanged:
    SetToolTip();
    MarkSaveButton();
    SetLabels();
    fNoticeBar->LanguageChanged();
    fFindBar->LanguageChanged();
    return fEditorView->MessageReceived(message);
  default:
    if (!fPanels->Handle(*message) && !fRecent->Handle(*message)) TKRVWin::MessageReceived(message);
  }
}

bool TVesmoEWin::QuitRequested() {
  // If the player asked, it resumes its shutdown after the save.
  const BMessage* const request = CurrentMessage();
  const bool isPlayers = request && be_app && request->ReturnAddress() == BMessenger(be_app);
  const BHandler* const asker = isPlayers ? static_cast<BHandler*>(be_app) : this;
  return fEditorView->AskSave(BMessage(B_QUIT_REQUESTED), asker);
}

void TVesmoEWin::Quit() {
  gExitState->fWindowFrame = Frame();
  // Not from the pressed button: between a change of the mode and 'umcr' that is still the previous mode's.
  gExitState->fMode = static_cast<int32>(fEditorView->Mode());
  fPanels->RememberFolders();
  // Posted only after the record is complete: from this message on the manager no longer waits for the window, and
  // other threads may write the record to the disk or read it for the next window.
  BMessage closed(kMsgMainClosed);
  closed.AddMessenger("window", BMessenger(this));
  closed.AddInt32("FilesTaken", fFilesTaken);
  fManager->PostMessage(&closed);
  TKRVWin::Quit();
}

void TVesmoEWin::CreateMenu() {
  fMenus->Build();
}

void TVesmoEWin::SetLabels() {
  CreateMenu();
  fRecent->GenerateMenuMRUF();
  MarkMode(static_cast<int32>(fEditorView->Mode()));
  fPanels->LanguageChanged();
}

void TVesmoEWin::UpdateModeComposRqtd(const BMessage& message) {
  int32 mode = 0;
  if (message.FindInt32("Mode", &mode) == B_OK) MarkMode(mode);
}

void TVesmoEWin::MarkMode(int32 mode) {
  fMenus->MarkMode(mode);
  PressModeButton(mode);
}

void TVesmoEWin::HistoryChanged(const BMessage& message) {
  fMenus->EnableHistory(message.GetBool("CanUndo"), message.GetBool("CanRedo"));
}

void TVesmoEWin::ModifiedChanged(const BMessage& message) {
  if (message.FindBool("Modified", &fIsModified) == B_OK) MarkSaveButton();
}

void TVesmoEWin::FindRqtd(const BMessage& message) {
  bool flag = false;
  if (message.what == kMsgShowFind && message.FindBool("Replace", &flag) == B_OK) return fFindBar->Open(flag);
  if (message.FindBool("Backward", &flag) == B_OK) fFindBar->FindNext(flag);
}

void TVesmoEWin::ViewChoicesChanged(const BMessage& message) {
  bool isMarked = false;
  if (message.FindBool("Follows", &isMarked) == B_OK) fMenus->Mark(TCommandId::kFollow, isMarked);
  if (message.FindBool("Clock", &isMarked) == B_OK) fMenus->Mark(TCommandId::kShowClock, isMarked);
  if (message.FindBool("Lane", &isMarked) == B_OK) fMenus->Mark(TCommandId::kShowLane, isMarked);
  if (message.FindBool("Wave", &isMarked) == B_OK) fMenus->Mark(TCommandId::kLaneWave, isMarked);
  if (message.FindBool("Clicks", &isMarked) == B_OK) fMenus->Mark(TCommandId::kClicks, isMarked);
  if (message.FindBool("CountsIn", &isMarked) == B_OK) fMenus->Mark(TCommandId::kCountIn, isMarked);
  if (message.FindBool("Words", &isMarked) != B_OK) return;
  fMenus->Mark(TCommandId::kWordByWord, isMarked);
  fToolBar->FindItem("TBWordByWord")->SetValue(isMarked);
}

void TVesmoEWin::UpdateWinPosDiffe() {
  fFollower->MeasureDistance();
}

void TVesmoEWin::FrameMoved(BPoint leftTop) {
  TKRVWin::FrameMoved(leftTop);
  if (fFollower) fFollower->WindowMoved(leftTop);
}

void TVesmoEWin::PrefStayOnTopChanged() {
  set_proper_feel(this);
}

// Applies all preferences, whichever the notice names: notices are coalesced.
void TVesmoEWin::IAPChanged() {
  SetLabels();
  UpdateToolBarCompos();
}
