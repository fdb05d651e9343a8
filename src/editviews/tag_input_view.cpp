#include "editviews/tag_input_view.h"

#include "commands/key_bindings.h"
#include "editviews/tag_input_item.h"
#include "editviews/tag_input_keys.h"
#include "editviews/view_choices.h"
#include "family/appearance.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/list_peer.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

namespace {

using enum TCommandId;

/** Nothing for a message that is no key event. */
std::optional<TKeyEvent> key_event_of(const BMessage* message) {
  TKeyEvent event;
  if (!message || message->FindInt64("when", &event.whenUs) != B_OK) return {};
  event.scanCode = message->GetInt32("scan_code", event.scanCode);
  return event;
}

} // namespace

TTagInputView::TTagInputView(BRect frame, Sonivo_FrontEnd* frontEnd, TViewChoices* choices)
    : BListView(frame, "TagInputView", B_RANGE_SELECTION_LIST, B_FOLLOW_ALL_SIDES,
                B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      fChoices(choices), fRows(this, this, {[this] { RowsEmptied(); }, [this] { fHabit.ForgetLines(); }}),
      fReplay(this, frontEnd), fHabit(&fRows, frontEnd), fTagKeys({&fRows, &fHabit, &fReplay, frontEnd, choices}),
      fLineCommands(&fRows), fProblems(&fRows), fPlayerKeys(&fRows, &fReplay, frontEnd),
      fListening(&fRows, &fReplay, frontEnd), fSung(&fRows, frontEnd, choices), fWords(&fRows),
      fWordKeys({&fRows, &fWords, &fHabit, &fReplay, frontEnd, choices}),
      fWordRows({&fRows, &fWords, &fSung, choices}) {
  SetAccessibleName("Lyrics");
}

/** While the parts that SelectionChanged informs still exist. */
TTagInputView::~TTagInputView() {
  fRows.Empty();
}

void TTagInputView::RowsEmptied() {
  fHabit.ForgetLines();
  fSung.Forget();
  fWords.Forget();
  fWordKeys.Forget();
  fWordRows.ForgetTimes();
}

void TTagInputView::SetCurLine(int32 line) {
  fRows.GoTo(line);
  InvalidateItem(line);
}

std::string TTagInputView::StatBarSymbol() const {
  return gLLT->Text(fRows.Form() == TTagForm::kExtended ? "StatBarSymbol_Tag_Input_Ext"
                                                        : "StatBarSymbol_Tag_Input_Std");
}

std::string TTagInputView::DefaultStatBarStr() const {
  return gLLT->Text("Default_StatBarStr_Tag_Input");
}

void TTagInputView::Clear() {
  fRows.Empty();
  SetModified(false);
}

void TTagInputView::SetAppearance() {
  const auto look = gPref->Values();
  SetViewColor(look->background);
  BFont font;
  GetFont(&font);
  font = lyrics_font(font, *look);
  SetFont(&font); // measures the rows and lays out the list again
  fRows.ShowPlaceholder();
}

void TTagInputView::AttachedToWindow() {
  BListView::AttachedToWindow();
  SetAppearance();
  KeysChanged();
  ReportReleases(IsWordByWord());
  report_view_choices(*fChoices, Window());
}

void TTagInputView::FrameResized(float width, float height) {
  BListView::FrameResized(width, height);
  if (CurrentSelection() >= 0) InvalidateItem(CurrentSelection());
}

bool TTagInputView::Replay(const TReplay& replay) {
  const TLinesChange& step = replay.change;
  const bool keepsCount = step.removed == static_cast<int32>(step.lines.size());
  const bool isOneLine = IsWordByWord() && keepsCount && step.removed == 1 && fRows.Has(step.first);
  const std::string before = isOneLine ? fRows.TextOf(step.first) : std::string();
  fRows.Change(step);
  if (keepsCount) fHabit.Replayed(step.first, step.lines);
  SetCurLine(replay.line);
  if (replay.anchor != replay.line) fRows.Select({replay.line, replay.anchor});
  if (isOneLine) fWords.Follow(step.first, before, step.lines.front());
  return true;
}

void TTagInputView::RetimeLines(const TLinesChange& change) {
  const std::optional<int32> beforeMs = Times().TimeOf(change.first);
  fRows.Retime(change);
  const std::optional<int32> afterMs = Times().TimeOf(change.first);
  if (change.removed == 1 && afterMs && afterMs != beforeMs) fHabit.Moved(change.first, *afterMs);
}

void TTagInputView::SetSongPosition(std::optional<int32> positionMs) {
  fSung.Mark(positionMs);
  if (IsWordByWord()) fWordRows.MarkSung(positionMs);
  fSung.Follow();
}

void TTagInputView::SelectionChanged() {
  fWordKeys.SelectionChanged();
  fListening.RowChanged();
}

void TTagInputView::WindowActivated(bool active) {
  BListView::WindowActivated(active);
  if (!active) fWordKeys.Forget();
}

void TTagInputView::Invoke() {
  RunCommand(kPlayFrom);
}

void TTagInputView::KeysChanged() {
  SetShortcuts(tag_input_shortcuts(*current_keys(), IsWordByWord()));
}

void TTagInputView::MessageReceived(BMessage* message) {
  if (message->what == kMsgReplayBeat) return fReplay.Beat();
  if (message->what == display::DISPLAY_KEY_RELEASED) {
    if (const auto released = key_event_of(message)) fWordKeys.Released(*released);
    return;
  }
  if (message->what == display::DISPLAY_ROWS_WANTED) MarkRows(*message);
  BListView::MessageReceived(message);
}

void TTagInputView::MarkRows(const BMessage& rowsWanted) {
  int32 row = 0;
  for (int32 i = 0; rowsWanted.FindInt32("row", i, &row) == B_OK; ++i) {
    fProblems.Mark(row);
    fWordRows.Mark(row);
  }
  fWordRows.ReportTimes();
}

bool TTagInputView::IsKeyRepeat() const {
  const BMessage* const key = Window() ? Window()->CurrentMessage() : nullptr;
  int32 repeat = 0;
  return key && key->FindInt32("key_repeat", &repeat) == B_OK && repeat > 0;
}

void TTagInputView::KeyDown(const char* bytes, int32 count) {
  fSung.KeyPressed();
  const bool isShiftInsert = count == 1 && bytes[0] == B_INSERT && HasModifier(B_SHIFT_KEY);
  if (isShiftInsert && !IsKeyRepeat()) { // the older key for it
    RunCommand(kPaste);
    return;
  }
  const bool isCaretKey = count == 1 && (bytes[0] == B_LEFT_ARROW || bytes[0] == B_RIGHT_ARROW);
  if (isCaretKey && IsWordByWord() && !IsCommand()) return fWordKeys.MoveCaret(bytes[0] == B_RIGHT_ARROW);
  const auto id = count > 0 ? command_of_byte(bytes[0], IsCommand()) : std::nullopt;
  if (!id) return BListView::KeyDown(bytes, count);
  if (!current_keys()->IsDefault(*id)) return BView::KeyDown(bytes, count); // without a meaning here
  // One press of the space bar, one tag, however long it is held.
  if (command(*id).repeats || !IsKeyRepeat()) RunCommand(*id);
}

void TTagInputView::ShortcutPressed(int32 number) {
  fSung.KeyPressed();
  const auto id = command_of(number);
  if (id && command(*id).target == TCommandTarget::kTagInput) RunCommand(*id);
}

bool TTagInputView::RunCommand(TCommandId id) {
  if (id == kWordByWord) return ToggleWordByWord(), true;
  const auto key = key_event_of(Window() ? Window()->CurrentMessage() : nullptr);
  if (id == kStamp && IsWordByWord()) return fWordKeys.Tap(key), true;
  if (id == kRetake && IsWordByWord()) return fWordKeys.TakeBack(), true;
  if (fListening.Run(id)) return true;
  if (fTagKeys.Run(id, key ? std::optional(key->whenUs) : std::nullopt)) return fListening.RowChanged(), true;
  return fWordKeys.Run(id) || fLineCommands.Run(id) || fProblems.Run(id) || fSung.Run(id) || fPlayerKeys.Run(id);
}

void TTagInputView::ToggleWordByWord() {
  fChoices->timesWords = !fChoices->timesWords;
  fChoices->Store();
  fWords.Forget();
  fWordKeys.Forget();
  fWordRows.ForgetSung();
  KeysChanged();
  ReportReleases(IsWordByWord());
  report_view_choices(*fChoices, Window());
  if (CountItems() > 0) Invalidate(BRect{0, 0, Bounds().Width(), ItemFrame(CountItems() - 1).bottom});
  fRows.Report(gLLT->Text(IsWordByWord() ? "StatBarStr_Words_On" : "StatBarStr_Words_Off"));
}
