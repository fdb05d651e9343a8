#include "editviews/tag_input_view.h"

#include "editviews/tag_input_item.h"
#include "editviews/tag_reports.h"
#include "family/appearance.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/time_tags.h"
#include "lyrics/word_lines.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>
#include <vector>

namespace {

/** The time that the player has to answer the request for its position. */
constexpr bigtime_t kAnswerUs = 20000;
/** The longest that a key event may have waited to be corrected for it. */
constexpr bigtime_t kLongestWaitUs = 5000000;

} // namespace

TTagInputView::TTagInputView(BRect frame, Sonivo_FrontEnd* frontEnd, TViewChoices* choices)
    : BListView(frame, "TagInputView", B_RANGE_SELECTION_LIST, B_FOLLOW_ALL_SIDES,
                B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      fChoices(choices), fFollowing(choices), fFrontEnd(frontEnd), fReplay(this, frontEnd) {
  SetAccessibleName("Lyrics");
}

TTagInputView::~TTagInputView() {
  ClearLines();
}

void TTagInputView::ClearLines() {
  std::vector<BListItem*> items;
  items.reserve(static_cast<size_t>(CountItems()));
  for (int32 i = 0; i < CountItems(); ++i) items.push_back(ItemAt(i));
  MakeEmpty();
  fLineTimes.Clear();
  fCorrections.ForgetLines();
  fSungRow = -1;
  fWordsRow = -1;
  fWordTimes.reset();
  fHeldKey.reset();
  for (const BListItem* item : items) delete item;
}

void TTagInputView::SetLines(const std::list<std::string>& lines) {
  ClearLines();
  std::vector<BListItem*> items;
  items.reserve(lines.size());
  for (const std::string& line : lines) {
    items.push_back(new TTagInputItem(line));
    fLineTimes.Append(line);
  }
  AddList(items);
  ShowPlaceholder();
}

void TTagInputView::ShowPlaceholder() {
  SetPlaceholder(IsEmptyDocument() ? gLLT->Text("Hint_Empty_Document") : "", gPref->Values()->lyrics);
}

void TTagInputView::GetLines(std::list<std::string>* lines) const {
  for (int32 i = 0; i < CountItems(); ++i) lines->push_back(Item(i)->Text());
}

void TTagInputView::SetCurLine(int32 line) {
  Select(line);
  ScrollToSelection();
  InvalidateItem(line);
}

std::string TTagInputView::StatBarSymbol() const {
  return gLLT->Text(fForm == TTagForm::kExtended ? "StatBarSymbol_Tag_Input_Ext" : "StatBarSymbol_Tag_Input_Std");
}

std::string TTagInputView::DefaultStatBarStr() const {
  return gLLT->Text("Default_StatBarStr_Tag_Input");
}

void TTagInputView::Clear() {
  ClearLines();
  SetModified(false);
}

void TTagInputView::SetAppearance() {
  const auto look = gPref->Values();
  SetViewColor(look->background);
  BFont font;
  GetFont(&font);
  font = lyrics_font(font, *look);
  SetFont(&font); // measures the rows and lays out the list again
  ShowPlaceholder();
}

void TTagInputView::AttachedToWindow() {
  BListView::AttachedToWindow();
  SetAppearance();
  KeysChanged();
  ReportReleases(fChoices->timesWords);
  report_view_choices(*fChoices, Window());
}

void TTagInputView::FrameResized(float width, float height) {
  BListView::FrameResized(width, height);
  if (CurrentSelection() >= 0) InvalidateItem(CurrentSelection());
}

bool TTagInputView::IsKeyRepeat() const {
  const BMessage* const key = Window() ? Window()->CurrentMessage() : nullptr;
  int32 repeat = 0;
  return key && key->FindInt32("key_repeat", &repeat) == B_OK && repeat > 0;
}

TTagInputItem* TTagInputView::Item(int32 row) const {
  return static_cast<TTagInputItem*>(ItemAt(row));
}

TTagInputItem* TTagInputView::SelectedItem() const {
  return Item(CurrentSelection());
}

int32 TTagInputView::StampTimeMs(std::optional<bigtime_t> whenUs) const {
  // The second refresh takes over the answer to the first request: the position at the moment of the key.
  const bigtime_t askedUs = system_time();
  fFrontEnd->Refresh();
  snooze(kAnswerUs);
  fFrontEnd->Refresh();
  const bool isMoving = whenUs && !fFrontEnd->IsKnownToRest();
  const int64 sinceUs = isMoving ? std::clamp<bigtime_t>(askedUs - *whenUs, 0, kLongestWaitUs) : 0;
  const int64 playedMs = (sinceUs * fFrontEnd->SpeedPercent() / 100 + 500) / 1000;
  const int64 timeMs = fFrontEnd->PositionMs() - playedMs + gPref->Values()->timeOffsetMs;
  return static_cast<int32>(std::clamp<int64>(timeMs, 0, INT32_MAX));
}

void TTagInputView::InputTagRqtd() {
  const int32 row = CurrentSelection();
  if (SelectedItem() == nullptr) return;
  const int32 timeMs = StampTimeMs();
  const TStampedLine stamped = stamp(Item(row)->Text(), timeMs, fForm);
  Select(row + 1); // no effect on the last row
  ScrollToSelection();
  ChangeRow(row, stamped.line, TEditKind::kStamp);
  NoteStamp(row, timeMs);
  Report(stamp_report(row, stamped) + StampRemark(timeMs), NewFinding());
}

void TTagInputView::IncDecTagRqtd(char key) {
  if (SelectedItem() == nullptr) return;
  const int32 row = CurrentSelection();
  const std::optional<TNudgedLine> nudged = nudge(Item(row)->Text(), key == '+');
  if (!nudged) return;
  Nudged(row, *nudged);
}

void TTagInputView::NudgeBy(int32 stepMs) {
  if (SelectedItem() == nullptr) return;
  const int32 row = CurrentSelection();
  const std::optional<TNudgedLine> nudged = nudge_by(Item(row)->Text(), stepMs);
  if (!nudged) return Report(gLLT->Text("StatBarStr_No_Tag_To_Play"));
  if (nudged->form == TTagForm::kStandard) return Report(gLLT->Text("StatBarStr_Whole_Seconds"));
  Nudged(row, *nudged);
}

void TTagInputView::Nudged(int32 row, const TNudgedLine& nudged) {
  const bool movesWords = fChoices->timesWords && has_word_times(nudged.line);
  ChangeRow(row, movesWords ? with_words_moved(Item(row)->Text(), nudged.line) : nudged.line, TEditKind::kOther);
  if (nudged.form == TTagForm::kExtended) NoteMove(row, static_cast<int32>(nudged.timeMs));
  Report(nudge_report(nudged), NewFinding());
  const std::optional<int32> timeMs = fLineTimes.TimeOf(row);
  if (gPref->Values()->replaysNudges && timeMs) fReplay.Nudged(*timeMs);
}

void TTagInputView::RemoveTagRqtd() {
  if (SelectedItem() == nullptr) return;
  const int32 row = CurrentSelection();
  std::string line = Item(row)->Text();
  if (fChoices->timesWords) line = without_word_times(line);
  remove_time_tag(&line); // a line without a tag does not change, but is reported as well
  ChangeRow(row, line, TEditKind::kOther);
  Report(removal_report(row));
}

void TTagInputView::SetText(int32 row, const std::string& text) {
  Item(row)->SetText(text);
  fLineTimes.Change(row, text);
  if (CountItems() == 1) ShowPlaceholder();
}

void TTagInputView::ChangeRow(int32 row, const std::string& text, TEditKind kind) {
  SetText(row, text);
  InvalidateItem(row);
  InvalidateNextTagged(row);
  SetModified(true);
  if (Listener()) Listener()->LinesEdited({row, 1, {text}}, kind, row, CurrentSelection());
}

bool TTagInputView::Replay(const TReplay& replay) {
  const TLinesChange& step = replay.change;
  const bool isOneLine = fChoices->timesWords && step.removed == 1 && step.lines.size() == 1 && Item(step.first);
  const std::string before = isOneLine ? Item(step.first)->Text() : std::string();
  ChangeLines(step);
  if (step.removed == static_cast<int32>(step.lines.size())) NoteReplay(step.first, step.lines);
  SetCurLine(replay.line);
  if (replay.anchor != replay.line) SelectLines({replay.line, replay.anchor});
  if (isOneLine) SetWordsFrom(step.first, before, step.lines.front());
  return true;
}

void TTagInputView::Report(const std::string& text, const std::string& finding) {
  BMessage report(kMsgStatBarStr);
  report.AddString("StatBarStr", text);
  if (!finding.empty()) report.AddString("Finding", finding);
  if (Window()) Window()->PostMessage(&report);
}
