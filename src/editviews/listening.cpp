#include "editviews/listening.h"

#include "editviews/nudge_replay.h"
#include "editviews/tag_rows.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/line_times.h"
#include "platform/kernel/threads.h"

#include <algorithm>

namespace {

using enum TCommandId;

constexpr int32 kAroundTagMs = 500;
/** What is left after rounding and delays of the player's record. */
constexpr int32 kOutsideLoopMs = 500;
/** By then the player's record shows that the loop has begun. */
constexpr bigtime_t kLoopIsKnownUs = 500000;

std::optional<int32> end_of(const TLineTimes& times, int32 row, int32 fromMs, int32 durationMs) {
  for (int32 next = row + 1; next < times.CountRows(); ++next) {
    const auto nextMs = times.TimeOf(next);
    if (nextMs && *nextMs > fromMs) return nextMs;
  }
  return durationMs > fromMs ? std::optional(durationMs) : std::nullopt;
}

} // namespace

std::optional<TLinePart> line_part(TCommandId id, const TLineTimes& times, int32 row, int32 durationMs) {
  const auto fromMs = row >= 0 && row < times.CountRows() ? times.TimeOf(row) : std::nullopt;
  if (!fromMs || (id == kHearBefore && *fromMs == 0)) return {};
  switch (id) {
  case kHearBefore:
    return TLinePart{std::max(*fromMs - kAroundTagMs, int32{0}), *fromMs};
  case kHearStart:
    return TLinePart{*fromMs, *fromMs + kAroundTagMs};
  case kHearFrom:
    return TLinePart{*fromMs, {}};
  default:
    return TLinePart{*fromMs, end_of(times, row, *fromMs, durationMs)};
  }
}

bool TListening::Run(TCommandId id) {
  switch (id) {
  case kHearBefore:
  case kHearStart:
  case kHearLine:
  case kHearFrom:
  case kHearLoop:
    if (fRows->Has(fRows->Current())) Hear(id);
    return true;
  case kRetake:
  case kClearWords:
  case kPlayFrom:
  case kPlayBefore:
  case kPlayPause:
  case kBack:
  case kForward:
  case kFromStart:
    fLoop.reset();
    return false;
  default:
    return false;
  }
}

void TListening::Hear(TCommandId id) {
  const bool wasLooping = IsLooping();
  fLoop.reset();
  fReplay->Cancel();
  if (id == kHearLoop && !wasLooping) return Loop();
  if (id == kHearLoop) {
    fFrontEnd->EndPart();
    return fRows->Report(gLLT->Text("StatBarStr_Loop_Off"));
  }
  const int32 row = fRows->Current();
  const auto part = line_part(id, fRows->Times(), row, fFrontEnd->DurationMs());
  if (!part) return fRows->Report(gLLT->Text("StatBarStr_No_Tag_To_Play"));
  fFrontEnd->PlayPart(part->fromMs, part->toMs);
  fRows->Report("StatBarStr_Playing_Line", row + 1);
}

void TListening::RowChanged() {
  if (!IsLooping()) return;
  fReplay->Cancel(); // the loop lets the user hear the new time
  if (line_part(kHearLoop, fRows->Times(), fRows->Current(), fFrontEnd->DurationMs()) != fLoop) Loop();
}

void TListening::Loop() {
  const bool wasLooping = fLoop.has_value();
  const int32 row = fRows->Current();
  fLoop = line_part(kHearLoop, fRows->Times(), row, fFrontEnd->DurationMs());
  if (fLoop && fLoop->toMs) {
    fLoopSinceUs = system_time();
    fFrontEnd->LoopPart(fLoop->fromMs, *fLoop->toMs);
    return fRows->Report("StatBarStr_Looping", row + 1);
  }
  fLoop.reset();
  if (wasLooping) fFrontEnd->EndPart();
  fRows->Report(gLLT->Text("StatBarStr_No_Tag_To_Play"));
}

bool TListening::IsLooping() {
  if (!fLoop || system_time() - fLoopSinceUs < kLoopIsKnownUs) return fLoop.has_value();
  const int32 positionMs = fFrontEnd->PositionMs();
  const bool isInside = positionMs > fLoop->fromMs - kOutsideLoopMs && positionMs < *fLoop->toMs + kOutsideLoopMs;
  if (!isInside || fFrontEnd->IsKnownToRest()) fLoop.reset();
  return fLoop.has_value();
}
