#include "editviews/nudge_replay.h"

#include "hostlink/host_link.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"

#include <algorithm>

namespace {
/** Debounce: a held key seeks once. */
constexpr bigtime_t kDebounceUs = 150000;
constexpr int32 kReplayMs = 500;
} // namespace

TNudgeReplay::TNudgeReplay(const BHandler* view, Sonivo_FrontEnd* frontEnd) : fView(view), fFrontEnd(frontEnd) {}

TNudgeReplay::~TNudgeReplay() = default;

void TNudgeReplay::Nudged(int32 timeMs) {
  fTimeMs = timeMs;
  const BMessage beat(kMsgReplayBeat);
  fRunner = std::make_unique<BMessageRunner>(BMessenger(fView), &beat, kDebounceUs, 1);
}

/** A nudge during a replay begins it again; the song, which was paused before, is paused again afterwards. */
void TNudgeReplay::Beat() {
  fRunner.reset();
  const bigtime_t nowUs = system_time();
  if (!fFrontEnd->IsPaused() && nowUs >= fReplaysUntilUs) {
    fFrontEnd->SeekTo(fTimeMs);
    return;
  }
  fFrontEnd->PlayPart(fTimeMs, fTimeMs + kReplayMs);
  fReplaysUntilUs = nowUs + bigtime_t{kReplayMs} * 1000 * 100 / std::max(fFrontEnd->SpeedPercent(), int32{1});
}

void TNudgeReplay::Cancel() {
  fRunner.reset();
  fReplaysUntilUs = 0;
}
