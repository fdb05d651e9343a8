#include "editviews/nudge_replay.h"

#include "hostlink/host_link.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "plugin/message_codes.h"

namespace {
/** Debounce: a held key seeks once. */
constexpr bigtime_t kDebounceUs = 150000;
constexpr bigtime_t kReplayUs = 500000;
} // namespace

TNudgeReplay::TNudgeReplay(const BHandler* view, Sonivo_FrontEnd* frontEnd) : fView(view), fFrontEnd(frontEnd) {}

TNudgeReplay::~TNudgeReplay() = default;

void TNudgeReplay::BeatIn(bigtime_t us) {
  const BMessage beat(kMsgReplayBeat);
  fRunner = std::make_unique<BMessageRunner>(BMessenger(fView), &beat, us, 1);
}

void TNudgeReplay::Nudged(int32 timeMs) {
  fTimeMs = timeMs;
  fState = TState::kWaiting;
  BeatIn(kDebounceUs);
}

void TNudgeReplay::Beat() {
  if (fState == TState::kWaiting)
    Begin();
  else if (fState == TState::kPlaying)
    End();
}

/** A nudge during a replay begins it again; that the song was paused before is still known then. */
void TNudgeReplay::Begin() {
  const bool isPaused = fFrontEnd->IsPaused();
  fPausesAfterwards = fPausesAfterwards || isPaused;
  fFrontEnd->SeekTo(fTimeMs);
  fState = fPausesAfterwards ? TState::kPlaying : TState::kIdle;
  if (!fPausesAfterwards) return;
  if (isPaused) fFrontEnd->PlayPause();
  BeatIn(kReplayUs);
}

/** The player may have been paused meanwhile in its own window. */
void TNudgeReplay::End() {
  if (!fFrontEnd->IsPaused()) fFrontEnd->PlayPause();
  fFrontEnd->SeekTo(fTimeMs);
  Cancel();
}

void TNudgeReplay::Cancel() {
  fState = TState::kIdle;
  fPausesAfterwards = false;
  fRunner.reset();
}
