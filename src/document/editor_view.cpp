#include "document/editor_view.h"

#include "common/app_info.h"
#include "document/document_teller.h"
#include "editviews/free_edit_view.h"
#include "editviews/tag_input_view.h"
#include "hostlink/current_song_finder.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/document_notices.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/interface/scroll_view.h"
#include "platform/interface/string_view.h"
#include "platform/interface/window.h"
#include "platform/support/cut_text.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {

constexpr float kStatusBarHeight = 14;
/** The link's own thread polls nothing; this is how often it looks whether it is to end. */
constexpr int64 kFrontEndIntervalUs = 100000;

constexpr int32 kFreeEditMode = 2;

BRect above_status_bar(BRect bounds) {
  bounds.bottom -= kStatusBarHeight + 1;
  return bounds;
}

BRect status_bar_of(BRect bounds) {
  bounds.top = bounds.bottom - kStatusBarHeight;
  return bounds;
}

} // namespace

TVesmoEView::TVesmoEView(BRect frame)
    : TKRVView(frame, "VesmoEditorView", B_FOLLOW_ALL_SIDES, B_FRAME_EVENTS),
      fFrontEnd(std::make_unique<Sonivo_FrontEnd>(false, kFrontEndIntervalUs)) {
  fFrontEnd->Start();
  const BRect editFrame = above_status_bar(Bounds());
  fTagInput = new TTagInputView(editFrame, fFrontEnd.get());
  fFreeEdit = new TFreeEditView(editFrame);
  fTagInput->SetListener(this);
  fFreeEdit->SetListener(this);
  fActive = fTagInput;
  fScroll = new BScrollView(editFrame, "ScrlView", fTagInput, B_FOLLOW_ALL_SIDES);
  AddChild(fScroll);
  fStatusBar = new BStringView(status_bar_of(Bounds()), "StatusBar", "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
  fStatusBar->SetAccessibleRole(B_STATUS_BAR_ROLE);
  AddChild(fStatusBar);
}

TVesmoEView::~TVesmoEView() {
  fPoll.reset();
  fTeller.reset();
  fFrontEnd->StopWaiting();
  fSongFinder.reset();
  if (fActive == fTagInput)
    delete fFreeEdit;
  else
    delete fTagInput;
}

void TVesmoEView::AttachedToWindow() {
  fSongFinder = std::make_unique<TCurrentSongFinder>(fFrontEnd.get(), BMessenger(this));
  fTeller = std::make_unique<TDocumentTeller>(BMessenger(this), fFrontEnd.get());
  const BMessage refresh(kMsgRefreshInfo);
  fPoll = std::make_unique<BMessageRunner>(BMessenger(this), &refresh, gPref->Values()->pollIntervalUs);
}

void TVesmoEView::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgNew:
    return MItemNewClicked();
  case kMsgOpenCurrent:
    return MItemOpenCurLyricsClicked();
  case kMsgSongFound:
  case kMsgNoSong:
  case kMsgPlayerSilent:
    return CurrentSongAnswered(*message);
  case B_REFS_RECEIVED:
    return RefsReceived(*message);
  case B_SIMPLE_DATA:
    if (!SimpleData(*message)) TKRVView::MessageReceived(message);
    return LanguageChanged();
  case kMsgSave:
    return MItemSaveClicked(*message);
  case B_SAVE_REQUESTED:
    return SaveRequested(*message);
  case kMsgMode:
    return MItemModeClicked(*message);
  case kMsgFollowDocument:
    return fTeller->FollowRqtd(*message);
  case kMsgTellWhole:
    return fTeller->TellWhole(fHistory.Lines(), fSongTitle, fInfo.File.IsEmpty() ? "" : fInfo.File.FullPath());
  case kMsgTellMarks:
    return fTeller->TellMarks(fHistory.Lines(), fSongTitle);
  case kMsgUndo:
    return UndoRqtd();
  case kMsgRedo:
    return RedoRqtd();
  case kMsgConvertTags:
    return MItemCvtTag(*message);
  case kMsgDeleteTags:
    return MItemDelAllTimeTagClicked();
  case kMsgExportTo:
    return ExportRqtd(*message);
  case kMsgShiftTags:
    return FineTimeTagRqtd(*message);
  case kMsgStatBarStr:
    return SetStatBarStrRqtd(*message);
  case kMsgDefaultStatBar:
    return ExpDefaultStatBarRqtd();
  case kMsgRefreshInfo:
    return RefreshSonivoInfoRqtd();
  case kMsgAppearance:
    return PrefAppearanceChanged();
  case kMsgPollInterval:
    return PrefPollIntervalChanged();
  case '_lgc':
    return LanguageChanged();
  default:
    TKRVView::MessageReceived(message);
  }
}

void TVesmoEView::SetActive(int32 mode) {
  BView* const shown = mode == kFreeEditMode ? static_cast<BView*>(fFreeEdit) : fTagInput;
  if (shown == fScroll->Target()) return;
  const bool hadFocus = fScroll->Target()->IsFocus();
  fScroll->SetTarget(shown);
  if (mode == kFreeEditMode)
    fActive = fFreeEdit;
  else
    fActive = fTagInput;
  if (hadFocus) shown->MakeFocus();
}

void TVesmoEView::FocusLyrics() {
  fScroll->Target()->MakeFocus();
}

void TVesmoEView::SetMode(int32 mode) {
  fMode = mode;
  SetActive(mode);
  fActive->SetMode(mode);
  ExpDefaultStatBarRqtd();
  BMessage changed(kMsgModeChanged);
  changed.AddInt32("Mode", mode);
  if (Window()) Window()->PostMessage(&changed);
}

void TVesmoEView::MItemModeClicked(const BMessage& message) {
  int32 mode = 0;
  if (message.FindInt32("Mode", &mode) != B_OK || mode < 0 || mode > kFreeEditMode) return;
  fActive->FlushEdits();
  std::list<std::string> lines;
  fActive->GetLines(&lines);
  const bool modified = fActive->IsModified();
  const int32 last = static_cast<int32>(lines.size()) - 1;
  const int32 line = std::clamp(fActive->CurLine(), int32{0}, std::max(last, int32{0}));
  TTrackedEditView* const left = fActive;
  SetMode(mode);
  if (left != fActive) left->Clear(); // a long text need not be held twice
  fActive->SetLines(lines);
  fActive->SetModified(modified);
  fActive->SetCurLine(line);
}

void TVesmoEView::MItemNewClicked() {
  if (!AskSave(BMessage(kMsgNew), this)) return;
  CreateNewLyrics();
  SetWinTitle();
  ExpDefaultStatBarRqtd();
}

void TVesmoEView::CreateNewLyrics() {
  const auto settings = gPref->Values();
  fActive->Clear();
  fActive->SetLines({std::string()});
  fActive->SetCurLine(0);
  const bool knowsEncoding = settings->writeEncoding >= 0 && settings->writeEncoding <= 2;
  BeginHistory();
  fIsWhole = true;
  fOutside.clear();
  fInfo = {cvt_enum_cr_type_to_ct(settings->writeCRType), knowsEncoding ? settings->writeEncoding : 0, {}};
}

std::string TVesmoEView::DocumentName() const {
  return fInfo.File.IsEmpty() ? gLLT->Text("New_Lyrics") : fInfo.File.name;
}

void TVesmoEView::SetWinTitle() {
  if (Window()) Window()->SetTitle((DocumentName() + " - " + gAppName).c_str());
}

void TVesmoEView::SetStatBarStr(const char* text) {
  const std::string encodingKey = "StatBarSymbol_Encoding_" + std::to_string(fInfo.Encoding);
  const std::string crTypeKey = "StatBarSymbol_CR_Type_" + std::to_string(fInfo.CRType);
  const std::string whole = " [" + fActive->StatBarSymbol() + "] " + gLLT->Text(encodingKey.c_str()) + " <" +
                            gLLT->Text(crTypeKey.c_str()) + ">   " + text;
  fStatusBar->SetText(whole.c_str());
}

void TVesmoEView::SetStatBarStrRqtd(const BMessage& message) {
  std::string text;
  if (message.FindString("StatBarStr", &text) != B_OK) return;
  std::string finding;
  if (message.FindString("Finding", &finding) == B_OK) text += "   " + finding;
  SetStatBarStr((std::string(cut_text(text)) + fSongWarning).c_str());
  fSongWarning.clear();
}

void TVesmoEView::ExpDefaultStatBarRqtd() {
  SetStatBarStr(fActive->DefaultStatBarStr().c_str());
}
void TVesmoEView::PrefAppearanceChanged() {
  fTagInput->SetAppearance();
  fFreeEdit->SetAppearance();
}

void TVesmoEView::PrefPollIntervalChanged() {
  fPoll->SetInterval(gPref->Values()->pollIntervalUs);
}

void TVesmoEView::LanguageChanged() {
  SetWinTitle();
  ExpDefaultStatBarRqtd();
}
