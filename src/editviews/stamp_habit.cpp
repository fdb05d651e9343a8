#include "editviews/stamp_habit.h"

#include "editviews/tag_reports.h"
#include "editviews/tag_rows.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/time_tags.h"
#include "platform/app/message.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <utility>

namespace {

int64 now_ms() {
  constexpr bigtime_t kUsPerMs = 1000;
  return system_time() / kUsPerMs;
}

} // namespace

void TStampHabit::Stamped(int32 row, int32 timeMs, const std::string& report) {
  fCorrections.Stamped(row, timeMs, now_ms(), gPref->Values()->timeOffsetMs);
  fRows->Report(report + RemarkOn(timeMs), NewFinding());
}

void TStampHabit::Moved(int32 row, int32 timeMs) {
  fCorrections.Moved(row, timeMs, now_ms());
}

void TStampHabit::Replayed(int32 first, const std::list<std::string>& lines) {
  long timeMs = 0;
  bool extended = false;
  int32 row = first;
  for (const std::string& line : lines) {
    if (time_tag_to_time(line, &timeMs, &extended)) Moved(row, static_cast<int32>(timeMs));
    ++row;
  }
}

std::string TStampHabit::RemarkOn(int32 timeMs) {
  const bool isSameAgain = std::exchange(fLastStampMs, timeMs) == timeMs;
  if (!fFrontEnd->IsKnownToRest()) return {};
  if (fFrontEnd->Title().empty()) return gLLT->Text("StatBarStr_Nothing_Plays");
  return isSameAgain ? gLLT->Text("StatBarStr_Stamped_In_Pause") : "";
}

std::string TStampHabit::NewFinding() {
  const auto latenessMs = fCorrections.NewFinding();
  if (!latenessMs) return {};
  BMessage hint(kMsgStampHint);
  hint.AddInt32("LateMs", *latenessMs);
  hint.AddInt32("TmDf", gPref->Values()->timeOffsetMs);
  fRows->Post(std::move(hint));
  return lateness_report(*latenessMs);
}
