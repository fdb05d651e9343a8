#include "editviews/tag_keys.h"

#include "editviews/nudge_replay.h"
#include "editviews/stamp_habit.h"
#include "editviews/stamp_time.h"
#include "editviews/tag_reports.h"
#include "editviews/tag_rows.h"
#include "editviews/view_choices.h"
#include "language/llt.h"
#include "lyrics/time_tags.h"
#include "lyrics/word_lines.h"
#include "plugin/pref.h"

bool TTagKeys::Run(TCommandId id, std::optional<bigtime_t> keyUs) {
  using enum TCommandId;
  switch (id) {
  case kStamp:
    return InputTagRqtd(keyUs), true;
  case kRetake:
    return fParts.rows->RetakeRqtd(), true;
  case kLater:
  case kEarlier:
    return IncDecTagRqtd(id == kLater ? '+' : '-'), true;
  case kLater10:
  case kEarlier10:
    return NudgeBy(id == kLater10 ? 10 : -10), true;
  case kLater100:
  case kEarlier100:
    return NudgeBy(id == kLater100 ? 100 : -100), true;
  case kLater500:
  case kEarlier500:
    return NudgeBy(id == kLater500 ? 500 : -500), true;
  case kRemoveTag:
    return RemoveTagRqtd(), true;
  default:
    return false;
  }
}

void TTagKeys::InputTagRqtd(std::optional<bigtime_t> keyUs) {
  TTagRows& rows = *fParts.rows;
  const int32 row = rows.Current();
  if (!rows.Has(row)) return;
  const int32 timeMs = stamp_time_ms(fParts.frontEnd, keyUs);
  const TStampedLine stamped = stamp(rows.TextOf(row), timeMs, rows.Form());
  rows.GoTo(row + 1); // no effect on the last row
  rows.ChangeRow(row, stamped.line, TEditKind::kStamp);
  fParts.habit->Stamped(row, timeMs, stamp_report(row, stamped));
}

void TTagKeys::IncDecTagRqtd(char key) {
  const int32 row = fParts.rows->Current();
  const std::optional<TNudgedLine> nudged = nudge(fParts.rows->TextOf(row), key == '+');
  if (nudged) Nudged(row, *nudged);
}

void TTagKeys::NudgeBy(int32 stepMs) {
  TTagRows& rows = *fParts.rows;
  const int32 row = rows.Current();
  if (!rows.Has(row)) return;
  const std::optional<TNudgedLine> nudged = nudge_by(rows.TextOf(row), stepMs);
  if (!nudged) return rows.Report(gLLT->Text("StatBarStr_No_Tag_To_Play"));
  if (nudged->form == TTagForm::kStandard) return rows.Report(gLLT->Text("StatBarStr_Whole_Seconds"));
  Nudged(row, *nudged);
}

void TTagKeys::Nudged(int32 row, const TNudgedLine& nudged) {
  TTagRows& rows = *fParts.rows;
  const bool movesWords = fParts.choices->timesWords && has_word_times(nudged.line);
  rows.ChangeRow(row, movesWords ? with_words_moved(rows.TextOf(row), nudged.line) : nudged.line, TEditKind::kOther);
  if (nudged.form == TTagForm::kExtended) fParts.habit->Moved(row, static_cast<int32>(nudged.timeMs));
  rows.Report(nudge_report(nudged), fParts.habit->NewFinding());
  const std::optional<int32> timeMs = rows.Times().TimeOf(row);
  if (gPref->Values()->replaysNudges && timeMs) fParts.replay->Nudged(*timeMs);
}

void TTagKeys::RemoveTagRqtd() {
  TTagRows& rows = *fParts.rows;
  const int32 row = rows.Current();
  if (!rows.Has(row)) return;
  std::string line = rows.TextOf(row);
  if (fParts.choices->timesWords) line = without_word_times(line);
  remove_time_tag(&line); // a line without a tag does not change, but is reported as well
  rows.ChangeRow(row, line, TEditKind::kOther);
  rows.Report(removal_report(row));
}
