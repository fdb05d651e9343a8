#include "editviews/sung_row.h"

#include "editviews/tag_input_item.h"
#include "editviews/tag_rows.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "platform/interface/list_view.h"
#include "platform/kernel/threads.h"

void TSungRow::Mark(std::optional<int32> positionMs) {
  const int32 row = positionMs ? fRows->Times().RowAt(*positionMs) : -1;
  if (row == fRow) return;
  for (const int32 changed : {fRow, row}) {
    if (TTagInputItem* const item = fRows->Item(changed)) {
      item->SetSung(changed == row);
      fRows->List().InvalidateItem(changed);
    }
  }
  fRow = row;
}

void TSungRow::Follow() {
  if (const auto row = fFollowing.RowToShow(fRow, system_time())) fRows->List().KeepInSight(*row);
}

void TSungRow::KeyPressed() {
  fFollowing.KeyPressed(system_time());
}

bool TSungRow::Run(TCommandId id) {
  switch (id) {
  case TCommandId::kFollow:
    return ToggleFollowing(), true;
  case TCommandId::kGoToSung:
    return GoThere(), true;
  default:
    return false;
  }
}

void TSungRow::ToggleFollowing() {
  fFollowing.Toggle();
  report_view_choices(*fChoices, fRows->List().Window());
  fRows->Report(gLLT->Text(fFollowing.IsOn() ? "StatBarStr_Follows" : "StatBarStr_Follows_Not"));
}

/** Also while the song is paused, when no line is marked. */
void TSungRow::GoThere() {
  const int32 row = fRows->Times().RowAt(fFrontEnd->PositionMs());
  if (row < 0) return fRows->Report(gLLT->Text("StatBarStr_Nothing_Sung"));
  fRows->GoTo(row);
}
