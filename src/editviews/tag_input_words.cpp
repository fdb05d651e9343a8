/** The tag input view word by word: the space bar times the units of the current line. */

#include "editviews/tag_input_item.h"
#include "editviews/tag_input_view.h"
#include "editviews/tag_reports.h"
#include "editviews/view_choices.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/word_lines.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"

#include <algorithm>

namespace {

using enum TCommandId;

/** A key that is held so long ends the line when it is released. */
constexpr bigtime_t kHoldUs = 200000;
/** How far before the line the song is rewound for another try. */
constexpr int32 kLeadMs = 2000;

/** When the event happened; nothing for a message that is no event. */
std::optional<bigtime_t> time_of_event(const BMessage* event) {
  int64 whenUs = 0;
  return event && event->FindInt64("when", &whenUs) == B_OK ? std::optional(whenUs) : std::nullopt;
}

} // namespace

void TTagInputView::ToggleWordByWord() {
  fChoices->timesWords = !fChoices->timesWords;
  fChoices->Store();
  fWordsRow = -1;
  fHeldKey.reset();
  fSungWord.reset();
  KeysChanged();
  ReportReleases(fChoices->timesWords);
  report_view_choices(*fChoices, Window());
  if (CountItems() > 0) Invalidate(BRect{0, 0, Bounds().Width(), ItemFrame(CountItems() - 1).bottom});
  Report(gLLT->Text(fChoices->timesWords ? "StatBarStr_Words_On" : "StatBarStr_Words_Off"));
}

TStampForms TTagInputView::StampForms() const {
  return {fForm, Listener() ? Listener()->WordForm() : TWordForm::kFamily};
}

void TTagInputView::ReadWords() {
  const int32 row = CurrentSelection();
  const std::string line = Item(row) ? Item(row)->Text() : std::string();
  row == fWordsRow ? fWords.Update(line) : fWords.Start(line);
  fWordsRow = row;
}

/** After undo and redo: the caret is at the word whose time was removed, or behind the one that was stamped. */
void TTagInputView::SetWordsFrom(int32 row, const std::string& before, const std::string& after) {
  fWords.Follow(before, after);
  fWordsRow = row == CurrentSelection() ? row : -1;
}

void TTagInputView::SelectionChanged() {
  fHeldKey.reset();
  fTappedRow = -1;
  if (CurrentSelection() != fWordsRow) fWordsRow = -1;
}

void TTagInputView::RunWordCommand(TCommandId id) {
  if (SelectedItem() == nullptr) return;
  if (!fChoices->timesWords) return Report(gLLT->Text("StatBarStr_Words_Are_Off"));
  ReadWords();
  const int32 row = fWordsRow;
  switch (id) {
  case kJoinWords:
  case kSplitWord:
    if (!(id == kJoinWords ? fWords.Join() : fWords.Split())) return Report(gLLT->Text("StatBarStr_No_Cut"));
    ChangeRow(row, fWords.Line().Line(), TEditKind::kOther);
    return ReportWord(row, fWords.NextUnit(), "StatBarStr_Next_Word");
  case kClearWords:
    return ClearWords();
  case kUnstampFromHere:
    return UnstampFromHere();
  default:
    return CopyWordTimes();
  }
}

void TTagInputView::TapWord() {
  if (SelectedItem() == nullptr) return;
  ReadWords();
  const int32 row = fWordsRow;
  const auto whenUs = time_of_event(Window() ? Window()->CurrentMessage() : nullptr);
  const int32 timeMs = StampTimeMs(whenUs);
  const TStampedLine wholeLine = stamp(Item(row)->Text(), timeMs, fForm);
  const size_t unit = fWords.NextUnit();
  const bool wasLast = fWords.Tap(timeMs, StampForms());
  const std::string line = fWords.Line().Line();
  if (wasLast) {
    Select(row + 1); // no effect on the last row
    ScrollToSelection();
  }
  fTappedRow = row;
  ChangeRow(row, line, TEditKind::kStamp);
  if (wasLast && whenUs && fWords.Line().CountUnits() > 0) fHeldKey = {row, line, *whenUs};
  if (unit > 0) return ReportWord(row, unit, "StatBarStr_Stamped_Word");
  NoteStamp(row, timeMs);
  Report(stamp_report(row, wholeLine) + StampRemark(timeMs), NewFinding());
}

void TTagInputView::KeyReleased(const BMessage& release) {
  const std::optional<THeldKey> held = std::exchange(fHeldKey, std::nullopt);
  const auto whenUs = time_of_event(&release);
  if (!held || !whenUs || *whenUs - held->sinceUs < kHoldUs) return;
  const int32 timeMs = StampTimeMs(whenUs);
  if (!Item(held->row) || Item(held->row)->Text() != held->line) return;
  TTimedLine line(held->line);
  line.StampEnd(timeMs, StampForms().word);
  ChangeRow(held->row, line.Line(), TEditKind::kStamp);
  Report(gLLT->Text("StatBarStr_Line_Ends") + std::to_string(held->row + 1));
}

/** After the last word of a line, the line below is the current one. The first one's time is that of its line. */
void TTagInputView::TakeBackWord() {
  if (SelectedItem() == nullptr) return;
  ReadWords();
  int32 row = fWordsRow;
  if (fWords.Caret() == 0 && fTappedRow == row - 1 && Item(row - 1)) {
    fWords.Start(Item(--row)->Text());
    fWords.MoveToEnd();
  }
  if (!fWords.TakeBack()) {
    const bool hadEnd = fWords.Line().EndMs().has_value();
    fWordsRow = -1;
    RetakeRqtd();
    if (hadEnd && !TTimedLine(Item(row)->Text()).EndMs()) RetakeRqtd(); // the end was a step of its own
    return;
  }
  fWordsRow = row;
  Select(row);
  ScrollToSelection();
  ChangeRow(row, fWords.Line().Line(), TEditKind::kOther);
  ReportWord(row, fWords.NextUnit(), "StatBarStr_Took_Back_Word");
}

void TTagInputView::ClearWords() {
  const int32 row = fWordsRow;
  fWords.ClearWords();
  ChangeRow(row, fWords.Line().Line(), TEditKind::kOther);
  fReplay.Cancel();
  if (const auto timeMs = fLineTimes.TimeOf(row)) fFrontEnd->SeekTo(std::max(*timeMs - kLeadMs, int32{0}));
  Report(gLLT->Text("StatBarStr_Cleared_Words") + std::to_string(row + 1));
}

void TTagInputView::UnstampFromHere() {
  const int32 first = fWordsRow;
  std::list<std::string> lines = LinesAt(first, CountItems() - 1);
  fWords.ClearFromHere();
  lines.front() = fWords.Line().Line();
  std::for_each(std::next(lines.begin()), lines.end(), [](std::string& line) { line = without_times(line); });
  EditLines({first, CountItems() - first, lines}, SelectedLines());
  Report(gLLT->Text("StatBarStr_Unstamped_From") + std::to_string(first + 1));
}

void TTagInputView::CopyWordTimes() {
  const std::string from = Item(fWordsRow)->Text();
  std::list<std::string> lines = LinesAt(0, CountItems() - 1);
  int32 count = 0;
  for (std::string& line : lines) {
    std::string changed = with_word_times_of(from, line);
    if (changed == line) continue;
    line = std::move(changed);
    ++count;
  }
  if (count == 0) return Report(gLLT->Text("StatBarStr_No_Equal_Lines"));
  EditLines({0, CountItems(), lines}, SelectedLines());
  ReportLines("StatBarStr_Copied_Words", count);
}

void TTagInputView::MoveCaret(bool right) {
  if (SelectedItem() == nullptr) return;
  ReadWords();
  fWords.MoveCaret(right);
  InvalidateItem(fWordsRow);
  ReportWord(fWordsRow, fWords.NextUnit(), "StatBarStr_Next_Word");
}

void TTagInputView::ReportWord(int32 row, size_t unit, const char* key) {
  const TTimedLine line(Item(row)->Text());
  Report(gLLT->Text(key) + std::to_string(unit + 1) + " / " + std::to_string(line.CountUnits()) + "  “" +
         line.TextOf(unit) + "”");
}

void TTagInputView::MarkWords(const BMessage& rowsWanted) {
  int32 row = 0;
  for (int32 i = 0; rowsWanted.FindInt32("row", i, &row) == B_OK; ++i)
    if (TTagInputItem* const item = Item(row)) item->SetWords(WordRow(row));
  ReportWordTimes();
}

/** Rows are drawn after every change of the current one. */
void TTagInputView::ReportWordTimes() {
  std::optional<std::string> times;
  if (fChoices->timesWords && fWordsRow >= 0) times = word_times_text(fWords.Line(), fWords.NextUnit());
  if (times == fWordTimes || !Listener() || (fChoices->timesWords && !times)) return;
  fWordTimes = times;
  Listener()->ShowWordTimes(times);
}

std::optional<TWordRow> TTagInputView::WordRow(int32 row) {
  if (!fChoices->timesWords) return {};
  TWordRow shown;
  if (row == fSungRow) shown.sung = fSungWord;
  if (row != CurrentSelection()) return shown;
  ReadWords();
  const TTimedLine& line = fWords.Line();
  if (line.CountUnits() == 0) return shown;
  shown.next = fWords.NextUnit();
  shown.caret = fWords.Caret();
  shown.spoken = std::to_string(line.CountTimed()) + gLLT->Text("StatBarStr_Words_Timed_1") +
                 std::to_string(line.CountUnits()) + gLLT->Text("StatBarStr_Words_Timed_2") + line.TextOf(*shown.next);
  return shown;
}

void TTagInputView::MarkSungWord(std::optional<int32> positionMs) {
  std::optional<size_t> sung;
  if (positionMs && Item(fSungRow)) {
    const long writtenMs = *positionMs + fLineTimes.OffsetMs();
    const std::string line = Item(fSungRow)->Text();
    sung = TTimedLine(line).UnitSungAt(writtenMs, sung_start(line, writtenMs));
  }
  if (sung == fSungWord) return;
  fSungWord = sung;
  InvalidateItem(fSungRow);
}
