/** The tag input view's way to the player, and its highlight of the line that is sung. */

#include "editviews/tag_input_item.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "platform/kernel/threads.h"
#include "plugin/pref.h"

#include <algorithm>

#include <utility>

std::string TTagInputView::StampRemark(int32 timeMs) {
  const bool isSameAgain = std::exchange(fLastStampMs, timeMs) == timeMs;
  if (!fFrontEnd->IsKnownToRest()) return {};
  if (fFrontEnd->Title().empty()) return gLLT->Text("StatBarStr_Nothing_Plays");
  return isSameAgain ? gLLT->Text("StatBarStr_Stamped_In_Pause") : "";
}

void TTagInputView::Invoke() {
  PlayFrom(gPref->Values()->leadInMs);
}

void TTagInputView::PlayFrom(int32 leadInMs) {
  if (SelectedItem() == nullptr) return;
  fReplay.Cancel();
  const std::optional<int32> timeMs = fLineTimes.TimeOf(CurrentSelection());
  if (!timeMs) return Report(gLLT->Text("StatBarStr_No_Tag_To_Play"));
  fFrontEnd->SeekTo(std::max(*timeMs - leadInMs, int32{0}));
  Report(gLLT->Text("StatBarStr_Playing_From") + std::to_string(CurrentSelection() + 1));
}

void TTagInputView::SetSongPosition(std::optional<int32> positionMs) {
  MarkSung(positionMs ? fLineTimes.RowAt(*positionMs) : -1);
  if (fChoices->timesWords) MarkSungWord(positionMs);
  if (const auto row = fFollowing.RowToShow(fSungRow, system_time())) KeepInSight(*row);
}

void TTagInputView::MarkSung(int32 row) {
  if (row == fSungRow) return;
  for (const int32 changed : {fSungRow, row}) {
    if (TTagInputItem* const item = Item(changed)) {
      item->SetSung(changed == row);
      InvalidateItem(changed);
    }
  }
  fSungRow = row;
}
