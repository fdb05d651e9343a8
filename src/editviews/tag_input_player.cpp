/** The tag input view's commands to the player, and its highlight of the line that is sung. */

#include "editviews/tag_input_item.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "language/llt.h"

namespace {
constexpr int32 kSkipMs = 2000;
constexpr int32 kSpeedPoints = 5;
} // namespace

bool TTagInputView::PlayerKey(char key) {
  switch (key) {
  case B_SPACE:
    if (!IsKeyRepeat()) fFrontEnd->PlayPause();
    return true;
  case B_LEFT_ARROW:
    fFrontEnd->SeekBy(-kSkipMs);
    return true;
  case B_RIGHT_ARROW:
    fFrontEnd->SeekBy(kSkipMs);
    return true;
  case B_UP_ARROW:
    fFrontEnd->ChangeSpeed(kSpeedPoints);
    return true;
  case B_DOWN_ARROW:
    fFrontEnd->ChangeSpeed(-kSpeedPoints);
    return true;
  default:
    return false;
  }
}

void TTagInputView::Invoke() {
  if (SelectedItem() == nullptr) return;
  const std::optional<int32> timeMs = fLineTimes.TimeOf(CurrentSelection());
  if (!timeMs) return Report(gLLT->Text("StatBarStr_No_Tag_To_Play"));
  fFrontEnd->SeekTo(*timeMs);
  Report(gLLT->Text("StatBarStr_Playing_From") + std::to_string(CurrentSelection() + 1));
}

void TTagInputView::SetSongPosition(std::optional<int32> positionMs) {
  MarkSung(positionMs ? fLineTimes.RowAt(*positionMs) : -1);
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
