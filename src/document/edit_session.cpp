#include "document/edit_session.h"

#include "document/document_song.h"
#include "document/encoding_name.h"
#include "document/word_strip.h"
#include "editviews/free_edit_view.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/time_tags.h"
#include "platform/app/message.h"
#include "platform/interface/scroll_view.h"
#include "platform/interface/string_view.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "platform/support/cut_text.h"
#include "plugin/message_codes.h"

#include <algorithm>

namespace {

constexpr float kStatusBarHeight = 14;
constexpr float kMarkMargin = 4;
/** Changes by a user who goes on typing while a step is replayed come first; this limits how often. */
constexpr int kMaxReplayTries = 100;
/** How far before the line the song is rewound for another try. */
constexpr long kLeadMs = 2000;
constexpr long kBeatMs = 500; // of the clicks before the line

BRect above_status_bar(BRect bounds) {
  bounds.bottom -= kStatusBarHeight + 1;
  return bounds;
}

BRect status_bar_frame(BRect bounds) {
  bounds.top = bounds.bottom - kStatusBarHeight;
  return bounds;
}

std::list<std::string> lines_of(const TEditViewInterface& view) {
  std::list<std::string> lines;
  view.GetLines(&lines);
  return lines;
}

/** " [mode] encoding <line end>   text"; the common dialect is named in front of the text. */
std::string status_text(const std::string& symbol, const TLyricsForm& form, const std::string& text) {
  const auto number = [](auto value) { return std::to_string(static_cast<int32>(value)); };
  const std::string lineEndKey = "StatBarSymbol_CR_Type_" + number(form.lineEnd);
  const bool isCommon = form.dialect == TDialect::kCommon;
  const std::string dialect = isCommon ? std::string(" ") + gLLT->Text("StatBarSymbol_Dialect_1") : std::string();
  return " [" + symbol + "] " + encoding_name(form.encoding) + " <" + gLLT->Text(lineEndKey.c_str()) + ">" + dialect +
         "   " + text;
}

/** Two beats before the line, which is the third. */
std::vector<int32> count_in(long lineMs) {
  std::vector<int32> timesMs;
  for (const long beforeMs : {2 * kBeatMs, kBeatMs})
    if (lineMs >= beforeMs) timesMs.push_back(static_cast<int32>(lineMs - beforeMs));
  return timesMs;
}

} // namespace

TEditSession::TEditSession(BView* parent, Sonivo_FrontEnd* frontEnd, TDocument* document, TDocumentSong* song)
    : fFrontEnd(frontEnd), fDocument(document), fSong(song) {
  const BRect frame = above_status_bar(parent->Bounds());
  fTagInput = new TTagInputView(frame, frontEnd, &fChoices);
  fFreeEdit = new TFreeEditView(frame);
  fTagInput->SetListener(this);
  fFreeEdit->SetListener(this);
  fActive = fTagInput;
  fScroll = new BScrollView(frame, "ScrlView", fTagInput, B_FOLLOW_ALL_SIDES);
  parent->AddChild(fScroll);
  const BRect bar = status_bar_frame(parent->Bounds());
  fStatusBar = new BStringView(bar, "StatusBar", "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
  fStatusBar->SetAccessibleRole(B_STATUS_BAR_ROLE);
  parent->AddChild(fStatusBar);
  fUnsavedMark = new BStringView(bar, "UnsavedMark", "", B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
  fUnsavedMark->SetAlignment(B_ALIGN_RIGHT);
  fUnsavedMark->Hide();
  parent->AddChild(fUnsavedMark);
  fClock = std::make_unique<TSongClock>(parent, bar, frontEnd);
  fWordStrip = std::make_unique<TWordStrip>(parent, fScroll);
  ShowClock();
}

TEditSession::~TEditSession() {
  if (fActive == fTagInput) {
    delete fFreeEdit;
  } else {
    delete fTagInput;
  }
}

void TEditSession::SetMode(TEditMode mode) {
  fMode = mode;
  const bool isFree = mode == TEditMode::kFreeEdit;
  fActive = isFree ? static_cast<TTrackedEditView*>(fFreeEdit) : fTagInput;
  fActive->SetMode(static_cast<int32>(mode));
  BView* const shown = isFree ? static_cast<BView*>(fFreeEdit) : fTagInput;
  if (shown == fScroll->Target()) return;
  const bool hadFocus = fScroll->Target()->IsFocus();
  fWordStrip->Show({});
  fScroll->SetTarget(shown);
  if (hadFocus) shown->MakeFocus();
}

void TEditSession::SwitchMode(TEditMode mode) {
  fActive->FlushEdits();
  const std::list<std::string> lines = lines_of(*fActive);
  const bool modified = fActive->IsModified();
  const int32 last = static_cast<int32>(lines.size()) - 1;
  const int32 line = std::clamp(fActive->CurLine(), int32{0}, std::max(last, int32{0}));
  TTrackedEditView* const left = fActive;
  SetMode(mode);
  if (left != fActive) left->Clear(); // one copy of a long text is enough
  fActive->SetLines(lines);
  fActive->SetModified(modified);
  fActive->SetCurLine(line);
}

void TEditSession::MakeFocus() {
  fScroll->Target()->MakeFocus();
}

void TEditSession::SetAppearance() {
  fTagInput->SetAppearance();
  fFreeEdit->SetAppearance();
}

void TEditSession::LanguageChanged() {
  fTagInput->LanguageChanged();
  fFreeEdit->LanguageChanged();
  fClock->LanguageChanged();
  PlaceStatusBar();
}

void TEditSession::Toggle(bool* choice) {
  *choice = !*choice;
  fChoices.Store();
  report_view_choices(fChoices, fScroll->Window());
}

void TEditSession::ToggleClock() {
  Toggle(&fChoices.showsClock);
  ShowClock();
}

void TEditSession::ShowClock() {
  fClock->SetShown(fChoices.showsClock);
  PlaceStatusBar();
}

void TEditSession::SetRoomBelow(float height) {
  const float step = fRoomBelow - height;
  fRoomBelow = height;
  const BRect frame = fScroll->Frame();
  fScroll->ResizeTo(frame.Width(), frame.Height() + step);
  fWordStrip->MoveBy(step);
}

BRect TEditSession::RoomBelow() const {
  BRect room = fScroll->Frame();
  room.bottom = fStatusBar->Frame().top - 1;
  room.top = room.bottom - fRoomBelow + 1;
  return room;
}

float TEditSession::LyricsHeight() const {
  return fScroll->Frame().Height() + 1;
}

void TEditSession::Report(const std::string& text) {
  fStatusBar->SetText(status_text(fActive->StatBarSymbol(), fDocument->Form(), text).c_str());
}

void TEditSession::ReportDefault() {
  Report(fActive->DefaultStatBarStr());
}

void TEditSession::ShowModified() {
  const bool isModified = fActive->IsModified();
  if (isModified == fShowsUnsaved || !fScroll->Window()) return;
  fShowsUnsaved = isModified;
  PlaceStatusBar();
  BMessage changed(kMsgModifiedChanged);
  changed.AddBool("Modified", isModified);
  fScroll->Window()->PostMessage(&changed);
}

/** The text, then the mark of unsaved changes, then the clock. */
void TEditSession::PlaceStatusBar() {
  BRect bar = fStatusBar->Frame();
  bar.right = fScroll->Frame().right;
  bar = fClock->PlaceIn(bar);
  if (fShowsUnsaved) {
    fUnsavedMark->SetText(gLLT->Text("Label_Not_Saved"));
    BRect mark = bar;
    mark.left = mark.right - fUnsavedMark->PreferredSize().x - kMarkMargin;
    fUnsavedMark->MoveTo(mark.LeftTop());
    fUnsavedMark->ResizeTo(mark.Width() - kMarkMargin, mark.Height());
    bar.right = mark.left - 1;
  }
  fStatusBar->ResizeTo(bar.Width(), bar.Height());
  if (fShowsUnsaved == fUnsavedMark->IsHiddenInParent()) fShowsUnsaved ? fUnsavedMark->Show() : fUnsavedMark->Hide();
}

void TEditSession::ReportFromView(const BMessage& message) {
  std::string text;
  if (message.FindString("StatBarStr", &text) != B_OK) return;
  std::string finding;
  if (message.FindString("Finding", &finding) == B_OK) text += "   " + finding;
  Report(std::string(cut_text(text)) + fSongWarning);
  fSongWarning.clear();
}

void TEditSession::Show(const std::list<std::string>& lines) {
  fActive->SetLines(lines);
  fActive->SetCurLine(0);
}

void TEditSession::DocumentStarted() {
  fActive->SetModified(fDocument->IsModified());
  fSong->Reset(fFrontEnd->Title());
  SendHistoryState();
}

void TEditSession::LinesEdited(const TLinesChange& change, TEditKind kind, TSelectedLines before,
                               TSelectedLines after) {
  if (kind == TEditKind::kStamp) CheckSong();
  fDocument->Change(change, kind, before, after, system_time());
  // Also after a change without a key, as by the mouse.
  if (fDocument->IsModified()) fActive->SetModified(true);
  SendHistoryState();
}

void TEditSession::ViewCommand(int32 number) {
  if (fActive == fTagInput) return fTagInput->ShortcutPressed(number);
  switch (command_of(number).value_or(TCommandId::kCount)) {
  case TCommandId::kCut:
    return fFreeEdit->Cut();
  case TCommandId::kCopy:
    return fFreeEdit->Copy();
  case TCommandId::kPaste:
    return fFreeEdit->Paste();
  case TCommandId::kSelectAll:
    return fFreeEdit->SelectAll();
  default:
    return;
  }
}

void TEditSession::CheckSong() {
  const std::string title = fFrontEnd->Title();
  fSong->Adopt(title);
  if (!fSong->IsAnother(title)) return;
  fSongWarning = gLLT->Text("StatBarStr_Another_Song_1") + title + gLLT->Text("StatBarStr_Another_Song_2");
}

void TEditSession::Rewrite(const std::function<void(std::list<std::string>*)>& rewrite) {
  fActive->FlushEdits();
  std::list<std::string> lines = lines_of(*fActive);
  const int32 line = fActive->CurLine();
  rewrite(&lines);
  fActive->SetLines(lines);
  fActive->SetCurLine(line);
  fDocument->Rewrite(lines, line, system_time());
  fActive->SetModified(true);
  SendHistoryState();
}

void TEditSession::UnifyTags(TDialect dialect) {
  fActive->FlushEdits();
  const int32 line = fActive->CurLine();
  fDocument->Unify(dialect, line, system_time());
  fActive->SetLines(fDocument->CopyLines());
  fActive->SetCurLine(line);
  fActive->SetModified(true);
  SendHistoryState();
}

void TEditSession::Reload(const TOpenedLyrics& opened) {
  fActive->FlushEdits();
  const int32 line = std::clamp(fActive->CurLine(), 0, static_cast<int32>(opened.lines.size()) - 1);
  fActive->SetLines(opened.lines);
  fActive->SetCurLine(line);
  fDocument->Reload(opened, line, system_time());
  fActive->SetModified(false);
  SendHistoryState();
}

bool TEditSession::Replay(TReplayDirection direction) {
  for (int i = 0; i < kMaxReplayTries; ++i) {
    fActive->FlushEdits();
    const std::optional<TReplay> replay = fDocument->Next(direction);
    if (!replay) return false;
    if (!fActive->Replay(*replay)) continue;
    fDocument->Replay(direction, *replay);
    fActive->SetModified(fDocument->IsModified());
    SendHistoryState();
    return true;
  }
  return false;
}

void TEditSession::Undo() {
  const bool isDone = Replay(TReplayDirection::kUndo);
  Report(gLLT->Text(isDone ? "StatBarStr_Undone" : "StatBarStr_Nothing_To_Undo"));
}

void TEditSession::Redo() {
  const bool isDone = Replay(TReplayDirection::kRedo);
  Report(gLLT->Text(isDone ? "StatBarStr_Redone" : "StatBarStr_Nothing_To_Redo"));
}

TWordForm TEditSession::WordForm() const {
  return fDocument->Form().dialect == TDialect::kCommon ? TWordForm::kCommon : TWordForm::kFamily;
}

void TEditSession::ShowWordTimes(const std::optional<std::string>& text) {
  fWordStrip->Show(text);
}

void TEditSession::RetakeRqtd() {
  const auto step =
      fDocument->LastKind() == TEditKind::kStamp ? fDocument->Next(TReplayDirection::kUndo) : std::nullopt;
  if (!step) return Report(gLLT->Text("StatBarStr_Nothing_To_Retake"));
  const auto row = static_cast<size_t>(step->change.first);
  long stampedMs = 0;
  bool extended = false;
  time_tag_to_time(fDocument->Lines()[row], &stampedMs, &extended);
  if (!Replay(TReplayDirection::kUndo)) return;
  fFrontEnd->SeekTo(static_cast<int32>(std::max(stampedMs - kLeadMs, 0L)));
  if (fChoices.countsIn) fFrontEnd->CountIn(count_in(stampedMs));
  Report(gLLT->Text("StatBarStr_Retake") + std::to_string(row + 1));
}

void TEditSession::SendHistoryState() {
  const bool canUndo = fDocument->CanReplay(TReplayDirection::kUndo);
  const bool canRedo = fDocument->CanReplay(TReplayDirection::kRedo);
  if (canUndo == fCanUndo && canRedo == fCanRedo) return;
  fCanUndo = canUndo;
  fCanRedo = canRedo;
  BMessage changed(kMsgHistoryChanged);
  changed.AddBool("CanUndo", canUndo);
  changed.AddBool("CanRedo", canRedo);
  if (fScroll->Window()) fScroll->Window()->PostMessage(&changed);
}
