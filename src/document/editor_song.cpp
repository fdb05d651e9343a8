/** The editor view and the song that plays: the line that is sung, another try, and a song that is not this text's. */

#include "document/document_teller.h"
#include "document/editor_view.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/time_tags.h"

#include <algorithm>

namespace {
/** How far before the line that is to be stamped again the song goes on. */
constexpr long kLeadMs = 2000;
} // namespace

void TVesmoEView::RefreshSonivoInfoRqtd() {
  fFrontEnd->Refresh();
  if (fSongTitle.empty() && !fFrontEnd->Title().empty()) {
    fSongTitle = fFrontEnd->Title();
    fTeller->DocumentChanged();
  }
  fTagInput->SetSongPosition(fFrontEnd->SungPositionMs());
}

void TVesmoEView::RetakeRqtd() {
  const auto step = fHistory.LastKind() == TEditKind::kStamp ? fHistory.NextUndo() : std::nullopt;
  if (!step) return SetStatBarStr(gLLT->Text("StatBarStr_Nothing_To_Retake"));
  const auto row = static_cast<size_t>(step->change.first);
  long stampedMs = 0;
  bool extended = false;
  time_tag_to_time(fHistory.Lines()[row], &stampedMs, &extended);
  if (!Replay(&TEditHistory::NextUndo, &TEditHistory::Undo)) return;
  fFrontEnd->SeekTo(static_cast<int32>(std::max(stampedMs - kLeadMs, 0L)));
  SetStatBarStr((gLLT->Text("StatBarStr_Retake") + std::to_string(row + 1)).c_str());
}

void TVesmoEView::BelongsToSongNow() {
  fSongTitle = fFrontEnd->Title();
}

void TVesmoEView::LookAtSong() {
  const std::string title = fFrontEnd->Title();
  if (fSongTitle.empty()) fSongTitle = title;
  if (title.empty() || title == fSongTitle) return;
  fSongWarning = gLLT->Text("StatBarStr_Another_Song_1") + title + gLLT->Text("StatBarStr_Another_Song_2");
}
