/** What the tag input view learns of its user: whether the stamps come late, from how they are put right. */

#include "editviews/tag_input_view.h"
#include "language/llt.h"
#include "lyrics/time_tags.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/pref.h"

#include <cstdlib>

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
  const std::string number = std::to_string(std::abs(*latenessMs));
  return *latenessMs > 0 ? gLLT->Text("StatBarStr_Stamps_Late_1") + number + gLLT->Text("StatBarStr_Stamps_Late_2")
                         : gLLT->Text("StatBarStr_Stamps_Early_1") + number + gLLT->Text("StatBarStr_Stamps_Early_2");
}
