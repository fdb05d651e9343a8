#include "editviews/tag_input_view.h"

#include "editviews/tag_input_item.h"
#include "family/appearance.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/time_tags.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/pref.h"

#include <algorithm>
#include <vector>

namespace {

/** Gives the player time to answer the request for its position. */
constexpr bigtime_t kAnswerUs = 20000;
constexpr long kStandardStepMs = 1000;
constexpr long kExtendedStepMs = 10;

} // namespace

TTagInputView::TTagInputView(BRect frame, Sonivo_FrontEnd* frontEnd)
    : BListView(frame, "TagInputView", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES,
                B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      fFrontEnd(frontEnd) {
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
  return gLLT->Text(fMode == 0 ? "StatBarSymbol_Tag_Input_Ext" : "StatBarSymbol_Tag_Input_Std");
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
  SetFont(&font, B_FONT_ALL); // measures every row anew and lays the list out
}

void TTagInputView::AttachedToWindow() {
  BListView::AttachedToWindow();
  SetAppearance();
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

void TTagInputView::KeyDown(const char* bytes, int32 count) {
  if (IsCommand()) {
    if (!PlayerKey(bytes[0])) BListView::KeyDown(bytes, count);
    return;
  }
  switch (count > 0 ? bytes[0] : '\0') {
  case '+':
  case '-':
    return IncDecTagRqtd(bytes[0]);
  case B_SPACE:
    // One press, one tag, however long the key is held.
    if (!IsKeyRepeat()) InputTagRqtd();
    return;
  case B_DELETE:
    return RemoveTagRqtd();
  case B_BACKSPACE:
    if (Listener() && !IsKeyRepeat()) Listener()->RetakeRqtd();
    return;
  default:
    BListView::KeyDown(bytes, count);
  }
}

TTagInputItem* TTagInputView::Item(int32 row) const {
  return static_cast<TTagInputItem*>(ItemAt(row));
}

TTagInputItem* TTagInputView::SelectedItem() const {
  return Item(CurrentSelection());
}

int32 TTagInputView::StampTimeMs() const {
  // The answer to the first request is what the second refresh takes: the position at the moment of the key.
  fFrontEnd->Refresh();
  snooze(kAnswerUs);
  fFrontEnd->Refresh();
  const int64 timeMs = int64{fFrontEnd->PositionMs()} + gPref->Values()->timeOffsetMs;
  return static_cast<int32>(std::clamp<int64>(timeMs, 0, INT32_MAX));
}

void TTagInputView::InputTagRqtd() {
  const int32 row = CurrentSelection();
  TTagInputItem* const item = SelectedItem();
  if (item == nullptr) return;
  const int32 newTimeMs = StampTimeMs();
  std::string line = item->Text();
  std::string report;
  long oldTimeMs = 0;
  bool wasExtended = false;
  if (time_tag_to_time(line, &oldTimeMs, &wasExtended)) {
    remove_time_tag(&line);
    report = gLLT->Text("StatBarStr_Replaced_Tag_1") + std::to_string(row + 1) +
             gLLT->Text("StatBarStr_Replaced_Tag_2") + std::to_string(newTimeMs - oldTimeMs) +
             gLLT->Text("StatBarStr_Replaced_Tag_3");
  } else {
    report = gLLT->Text("StatBarStr_Inserted_New_Tag") + std::to_string(row + 1);
  }
  std::string tag;
  time_to_time_tag(newTimeMs, &tag, fMode == 0);
  Select(row + 1); // none below the last one: the selection stays
  ScrollToSelection();
  ChangeRow(row, tag + line, TEditKind::kStamp);
  NoteStamp(row, newTimeMs);
  Report(report, NewFinding());
}

void TTagInputView::IncDecTagRqtd(char key) {
  TTagInputItem* const item = SelectedItem();
  if (item == nullptr) return;
  std::string line = item->Text();
  long timeMs = 0;
  bool extended = false;
  if (!time_tag_to_time(line, &timeMs, &extended)) return;
  const long size = extended ? kExtendedStepMs : kStandardStepMs;
  const long stepMs = key == '-' ? -size : size;
  std::string tag;
  time_to_time_tag(timeMs + stepMs, &tag, extended);
  remove_time_tag(&line);
  ChangeRow(CurrentSelection(), tag + line, TEditKind::kOther);
  if (extended) NoteMove(CurrentSelection(), static_cast<int32>(timeMs + stepMs));
  Report(gLLT->Text("StatBarStr_Fined_One_Time_Tag") + std::to_string(stepMs) + "[ms]", NewFinding());
}

void TTagInputView::RemoveTagRqtd() {
  TTagInputItem* const item = SelectedItem();
  if (item == nullptr) return;
  std::string line = item->Text();
  remove_time_tag(&line); // a line without a tag stays, and is reported all the same
  ChangeRow(CurrentSelection(), line, TEditKind::kOther);
  Report(gLLT->Text("StatBarStr_Removed_Tag") + std::to_string(CurrentSelection() + 1));
}

void TTagInputView::SetText(int32 row, const std::string& text) {
  Item(row)->SetText(text);
  fLineTimes.Change(row, text);
}

void TTagInputView::ChangeRow(int32 row, const std::string& text, TEditKind kind) {
  SetText(row, text);
  InvalidateItem(row);
  SetModified(true);
  if (Listener()) Listener()->LinesEdited({row, 1, {text}}, kind, row, CurrentSelection());
}

bool TTagInputView::Replay(const TReplay& replay) {
  const TLinesChange& step = replay.change;
  if (step.removed == static_cast<int32>(step.lines.size())) {
    int32 row = step.first;
    for (const std::string& line : step.lines) SetText(row++, line);
    BRect changed = ItemFrame(step.first);
    changed.bottom = ItemFrame(row - 1).bottom;
    Invalidate(changed);
    NoteReplay(step.first, step.lines);
  } else {
    std::list<std::string> lines;
    GetLines(&lines);
    const auto first = std::next(lines.begin(), step.first);
    lines.insert(lines.erase(first, std::next(first, step.removed)), step.lines.begin(), step.lines.end());
    SetLines(lines);
  }
  SetCurLine(replay.line);
  return true;
}

void TTagInputView::Report(const std::string& text, const std::string& finding) {
  BMessage report(kMsgStatBarStr);
  report.AddString("StatBarStr", text);
  if (!finding.empty()) report.AddString("Finding", finding);
  if (Window()) Window()->PostMessage(&report);
}
