/** Estimates from the corrections of fresh stamps how late the user presses the key. */

#include "editviews/tag_input_view.h"
#include "editviews/tag_reports.h"
#include "lyrics/time_tags.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

namespace {

int64 now_ms() {
  constexpr bigtime_t kUsPerMs = 1000;
  return system_time() / kUsPerMs;
}

} // namespace

void TTagInputView::NoteStamp(int32 row, int32 timeMs) {
  fCorrections.Stamped(row, timeMs, now_ms(), gPref->Values()->timeOffsetMs);
}

void TTagInputView::NoteMove(int32 row, int32 timeMs) {
  fCorrections.Moved(row, timeMs, now_ms());
}

void TTagInputView::NoteReplay(int32 first, const std::list<std::string>& lines) {
  long timeMs = 0;
  bool extended = false;
  int32 row = first;
  for (const std::string& line : lines) {
    if (time_tag_to_time(line, &timeMs, &extended)) NoteMove(row, static_cast<int32>(timeMs));
    ++row;
  }
}

std::string TTagInputView::NewFinding() {
  const auto latenessMs = fCorrections.NewFinding();
  if (!latenessMs || !Window()) return {};
  BMessage hint(kMsgStampHint);
  hint.AddInt32("LateMs", *latenessMs);
  hint.AddInt32("TmDf", gPref->Values()->timeOffsetMs);
  Window()->PostMessage(&hint);
  return lateness_report(*latenessMs);
}
