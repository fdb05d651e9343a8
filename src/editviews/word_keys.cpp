#include "editviews/word_keys.h"

#include "editviews/current_words.h"
#include "editviews/nudge_replay.h"
#include "editviews/stamp_habit.h"
#include "editviews/stamp_time.h"
#include "editviews/tag_input_keys.h"
#include "editviews/tag_reports.h"
#include "editviews/tag_rows.h"
#include "editviews/view_choices.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/word_lines.h"
#include "platform/interface/list_view.h"

#include <algorithm>
#include <utility>

namespace {
/** A key that is held so long ends the line when it is released. */
constexpr bigtime_t kHoldUs = 200000;
/** How far before the line the song is rewound for another try. */
constexpr int32 kLeadMs = 2000;
} // namespace

bool TWordKeys::Run(TCommandId id) {
  using enum TCommandId;
  if (!is_for_words(id)) return false;
  TTagRows& rows = *fParts.rows;
  if (!rows.Has(rows.Current())) return true;
  if (!fParts.choices->timesWords) return rows.Report(gLLT->Text("StatBarStr_Words_Are_Off")), true;
  fParts.words->Read();
  switch (id) {
  case kJoinWords:
  case kSplitWord:
    return ChangeCuts(id == kJoinWords), true;
  case kClearWords:
    return ClearWords(), true;
  case kUnstampFromHere:
    return UnstampFromHere(), true;
  default:
    return CopyWordTimes(), true;
  }
}

void TWordKeys::SelectionChanged() {
  fHeldKey.reset();
  fTappedRow = -1;
  fParts.words->SelectionChanged();
}

void TWordKeys::Tap(const std::optional<TKeyEvent>& pressed) {
  TTagRows& rows = *fParts.rows;
  const int32 row = rows.Current();
  if (!rows.Has(row)) return;
  TWordStamper& words = fParts.words->Read();
  const int32 timeMs = word_time_ms(fParts.frontEnd, pressed ? std::optional(pressed->whenUs) : std::nullopt);
  const TStampedLine wholeLine = stamp(rows.TextOf(row), timeMs, rows.Form());
  const size_t unit = words.NextUnit();
  const bool wasLast = words.Tap(timeMs, rows.Forms());
  const std::string line = words.Line().Line();
  const bool canBeHeld = wasLast && words.Line().CountUnits() > 0;
  if (wasLast) rows.GoTo(row + 1); // no effect on the last row
  fTappedRow = row;
  rows.ChangeRow(row, line, TEditKind::kStamp);
  if (canBeHeld && pressed) fHeldKey = {row, line, *pressed};
  if (unit > 0) return Report(row, unit, "StatBarStr_Stamped_Word");
  fParts.habit->Stamped(row, timeMs, stamp_report(row, wholeLine));
}

void TWordKeys::Released(const TKeyEvent& released) {
  if (!fHeldKey || fHeldKey->pressed.scanCode != released.scanCode) return;
  const std::optional<THeldKey> held = std::exchange(fHeldKey, std::nullopt);
  if (released.whenUs - held->pressed.whenUs < kHoldUs) return;
  const int32 timeMs = word_time_ms(fParts.frontEnd, released.whenUs);
  TTagRows& rows = *fParts.rows;
  if (!rows.Has(held->row) || rows.TextOf(held->row) != held->line) return;
  TTimedLine line(held->line);
  line.StampEnd(timeMs, rows.Forms().word);
  rows.ChangeRow(held->row, line.Line(), TEditKind::kStamp);
  rows.Report("StatBarStr_Line_Ends", held->row + 1);
}

/** After the last word of a line, the line below is the current one. The first one's time is that of its line. */
void TWordKeys::TakeBack() {
  TTagRows& rows = *fParts.rows;
  int32 row = rows.Current();
  if (!rows.Has(row)) return;
  TWordStamper& words = fParts.words->Read();
  if (words.Caret() == 0 && fTappedRow == row - 1 && rows.Has(row - 1)) fParts.words->ReadAtEnd(--row);
  if (!words.TakeBack()) {
    const bool hadEnd = words.Line().EndMs().has_value();
    fParts.words->Forget();
    rows.RetakeRqtd();
    if (hadEnd && !TTimedLine(rows.TextOf(row)).EndMs()) rows.RetakeRqtd(); // the end was a step of its own
    return;
  }
  rows.GoTo(row);
  rows.ChangeRow(row, words.Line().Line(), TEditKind::kOther);
  Report(row, words.NextUnit(), "StatBarStr_Took_Back_Word");
}

void TWordKeys::ChangeCuts(bool joins) {
  TWordStamper& words = fParts.words->Read();
  if (!(joins ? words.Join() : words.Split())) return fParts.rows->Report(gLLT->Text("StatBarStr_No_Cut"));
  const int32 row = fParts.words->Row();
  fParts.rows->ChangeRow(row, words.Line().Line(), TEditKind::kOther);
  Report(row, words.NextUnit(), "StatBarStr_Next_Word");
}

void TWordKeys::ClearWords() {
  const int32 row = fParts.words->Row();
  TWordStamper& words = fParts.words->Read();
  words.ClearWords();
  fParts.rows->ChangeRow(row, words.Line().Line(), TEditKind::kOther);
  fParts.replay->Cancel();
  if (const auto timeMs = fParts.rows->Times().TimeOf(row))
    fParts.frontEnd->SeekTo(std::max(*timeMs - kLeadMs, int32{0}));
  fParts.rows->Report("StatBarStr_Cleared_Words", row + 1);
}

void TWordKeys::UnstampFromHere() {
  TTagRows& rows = *fParts.rows;
  const int32 first = fParts.words->Row();
  std::list<std::string> lines = rows.LinesAt(first, rows.Count() - 1);
  TWordStamper& words = fParts.words->Read();
  words.ClearFromHere();
  lines.front() = words.Line().Line();
  std::for_each(std::next(lines.begin()), lines.end(), [](std::string& line) { line = without_times(line); });
  rows.Edit({first, rows.Count() - first, lines}, rows.Selected());
  rows.Report("StatBarStr_Unstamped_From", first + 1);
}

void TWordKeys::CopyWordTimes() {
  TTagRows& rows = *fParts.rows;
  const std::string from = rows.TextOf(fParts.words->Row());
  std::list<std::string> lines = rows.LinesAt(0, rows.Count() - 1);
  int32 count = 0;
  for (std::string& line : lines) {
    std::string changed = with_word_times_of(from, line);
    if (changed == line) continue;
    line = std::move(changed);
    ++count;
  }
  if (count == 0) return rows.Report(gLLT->Text("StatBarStr_No_Equal_Lines"));
  rows.Edit({0, rows.Count(), lines}, rows.Selected());
  rows.Report("StatBarStr_Copied_Words", count);
}

void TWordKeys::MoveCaret(bool right) {
  TTagRows& rows = *fParts.rows;
  const int32 row = rows.Current();
  if (!rows.Has(row)) return;
  TWordStamper& words = fParts.words->Read();
  words.MoveCaret(right);
  rows.List().InvalidateItem(row);
  Report(row, words.NextUnit(), "StatBarStr_Next_Word");
}

void TWordKeys::Report(int32 row, size_t unit, const char* key) const {
  const TTimedLine line(fParts.rows->TextOf(row));
  fParts.rows->Report(gLLT->Text(key) + std::to_string(unit + 1) + " / " + std::to_string(line.CountUnits()) + "  “" +
                      line.TextOf(unit) + "”");
}
