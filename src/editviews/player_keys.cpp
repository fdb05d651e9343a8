#include "editviews/player_keys.h"

#include "editviews/nudge_replay.h"
#include "editviews/tag_rows.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {
constexpr int32 kSkipMs = 2000;
constexpr int32 kSpeedPoints = 5;
/** For a listener who wants to hear the line before. */
constexpr int32 kLeadInMs = 1000;
} // namespace

bool TPlayerKeys::Run(TCommandId id) {
  using enum TCommandId;
  switch (id) {
  case kPlayFrom:
    return PlayFrom(gPref->Values()->leadInMs), true;
  case kPlayBefore:
    return PlayFrom(kLeadInMs), true;
  case kPlayPause:
    return PlayPause(), true;
  case kBack:
  case kForward:
    return SeekBy(id == kForward ? kSkipMs : -kSkipMs), true;
  case kFaster:
  case kSlower:
    return fFrontEnd->ChangeSpeed(id == kFaster ? kSpeedPoints : -kSpeedPoints), true;
  case kFromStart:
    return GoToStart(), true;
  default:
    return false;
  }
}

void TPlayerKeys::PlayFrom(int32 leadInMs) {
  const int32 row = fRows->Current();
  if (!fRows->Has(row)) return;
  fReplay->Cancel();
  const std::optional<int32> timeMs = fRows->Times().TimeOf(row);
  if (!timeMs) return fRows->Report(gLLT->Text("StatBarStr_No_Tag_To_Play"));
  fFrontEnd->SeekTo(std::max(*timeMs - leadInMs, int32{0}));
  fRows->Report("StatBarStr_Playing_From", row + 1);
}

void TPlayerKeys::PlayPause() {
  fReplay->Cancel();
  fFrontEnd->PlayPause();
}

void TPlayerKeys::SeekBy(int32 stepMs) {
  fReplay->Cancel();
  fFrontEnd->SeekBy(stepMs);
}

void TPlayerKeys::GoToStart() {
  fReplay->Cancel();
  fFrontEnd->SeekTo(0);
  fRows->GoTo(0);
  fRows->Report(gLLT->Text("StatBarStr_From_Start"));
}
