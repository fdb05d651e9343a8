/** How the tag input view follows the song. */

#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"

void TTagInputView::ToggleFollowing() {
  fFollowing.Toggle();
  report_view_choices(*fChoices, Window());
  Report(gLLT->Text(fFollowing.IsOn() ? "StatBarStr_Follows" : "StatBarStr_Follows_Not"));
}

/** Also while the song is paused, when no line is marked. */
void TTagInputView::GoToSungRow() {
  const int32 row = fLineTimes.RowAt(fFrontEnd->PositionMs());
  if (row < 0) return Report(gLLT->Text("StatBarStr_Nothing_Sung"));
  GoTo(row);
}

void TTagInputView::GoToStart() {
  fReplay.Cancel();
  fFrontEnd->SeekTo(0);
  GoTo(0);
  Report(gLLT->Text("StatBarStr_From_Start"));
}
