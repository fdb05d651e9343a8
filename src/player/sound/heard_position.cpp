#include "player/sound/heard_position.h"

#include <algorithm>
#include <cmath>

namespace {

/** Seeks take 35 to 90 ms to be heard; a load may have to wait for a slow disk. */
constexpr bigtime_t kLongestStartUs = 1000000;
/** An answer that took longer says too little about the moment for which it is true. */
constexpr bigtime_t kPromptUs = 2000;

} // namespace

int32 THeardPosition::Ms(const TAsk& ask) {
  const int64 move = fLastMove;
  if (fPaused && fKnownSince == move) return fMs; // asking would wake the library
  if (const auto positionMs = Reused()) return *positionMs;
  const bool standsStill = fPaused && fClock() >= fMovesUntil;
  // Unavailable while nothing is heard; after a seek, still the old position until the new one is heard.
  if (ask && fClock() >= fExpectedUntil) {
    const bigtime_t askedUs = fClock();
    const auto seconds = fQuestion.Ask(ask);
    fMs = From(seconds);
    Keep(seconds, askedUs);
  }
  if (standsStill) fKnownSince = move;
  return fMs;
}

/** While the song just plays on: asking takes several switches between threads, and editors ask 40 times a second.
    Nothing if the library has to be asked. */
std::optional<int32> THeardPosition::Reused() const {
  const bigtime_t now = fClock();
  if (fPaused || fHasRange || now < std::max<bigtime_t>(fMovesUntil, fExpectedUntil) || fJoin.IsPending()) return {};
  const std::lock_guard lock(fSteadyMutex);
  return fSteadyPlay.PositionMsSoon(now);
}

void THeardPosition::Keep(std::optional<double> seconds, bigtime_t askedUs) {
  const bigtime_t answeredUs = fClock();
  const bool isExact = seconds && answeredUs - askedUs <= kPromptUs;
  const int64 positionUs = isExact ? std::llround(*seconds * 1e6 - fBiasMs * 1e3) : 0;
  const std::lock_guard lock(fSteadyMutex);
  fSteadyPlay.Add({askedUs + (answeredUs - askedUs) / 2, positionUs, static_cast<int32>(std::lround(fSpeed * 100)),
                   isExact && !fPaused});
}

int32 THeardPosition::From(std::optional<double> seconds) {
  const bigtime_t now = fClock();
  const auto ms = seconds ? std::optional(*seconds * 1000 - fBiasMs) : std::nullopt;
  if (fJoin.IsPending()) return fJoin.PositionMs(ms, fSpeed, now);
  if (!ms) return fMs;
  fJoin.Heard(*ms, now);
  return std::max(0, static_cast<int32>(std::lround(*ms)));
}

void THeardPosition::Begin(bool paused) {
  fPaused = paused;
  fHasRange = false;
  Expect(0);
}

void THeardPosition::Expect(int32 positionMs) {
  fMs = positionMs;
  fJoin.Jumped(positionMs);
  fExpectedUntil = fClock() + kLongestStartUs;
}

void THeardPosition::ExpectNothing() {
  fMs = 0;
  fExpectedUntil = 0;
}

void THeardPosition::Moves() {
  fMovesUntil = fClock() + kLongestStartUs;
  ++fLastMove;
}

int32 THeardPosition::Interrupted(double seconds) {
  const bool isSought = fClock() < fExpectedUntil;
  if (!isSought) Expect(static_cast<int32>(std::lround(std::clamp(seconds * 1000 - fBiasMs, 0.0, 2147483647.0))));
  Moves();
  return fMs;
}

void THeardPosition::Arrived() {
  fExpectedUntil = 0;
  Moves();
}

bool THeardPosition::FollowerIsHeard(double seconds) {
  fMs = From(seconds);
  return seconds * 1000 >= fBiasMs;
}

int32 THeardPosition::FinishJoin() {
  const int32 endedMs = fJoin.Finish(fSpeed, fClock());
  fMs = 0;
  Moves();
  return endedMs;
}
