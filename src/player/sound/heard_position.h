#pragma once

#include "platform/kernel/threads.h"
#include "platform/support/types.h"
#include "player/model/steady_play.h"
#include "player/model/timed_question.h"
#include "player/sound/song_join.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

/** Where in the song the sound is, in ms of the song. The audio library is asked; what it cannot say is bridged: from a
    seek until it is heard, at a gapless join, and between two answers while the song just plays on. Thread-safe; no
   call waits for the library without a limit. */
class THeardPosition {
public:
  /** Passes a question for the library's position on, with an id; false if that fails. */
  using TAsk = std::function<bool(uint64 id)>;
  using TClock = bigtime_t (*)();

  /** `clock` is the monotonic clock. */
  explicit THeardPosition(TClock clock = system_time) : fClock(clock) {}

  /** Before the library is open, `ask` is empty. */
  int32 Ms(const TAsk& ask);
  /** The library's answer; nothing while nothing is heard. */
  void Answer(uint64 id, std::optional<double> seconds) { fQuestion.Answer(id, seconds); }
  /** The library has not answered for that long. */
  bool IsOverdueFor(bigtime_t us) const { return fQuestion.IsOverdueFor(us); }

  /** Another song is loaded. */
  void Begin(bool paused);
  void SetPaused(bool paused) { fPaused = paused; }
  bool IsPaused() const { return fPaused; }
  void SetSpeed(double speed) { fSpeed = speed; }
  /** By how much the library's positions are ahead at this speed. */
  void SetBias(double ms) { fBiasMs = ms; }
  /** A part of this song is played or repeated: from now on its position may jump at any time. */
  void SetHasRange() { fHasRange = true; }
  /** The position until the song is heard from there. Expires in case the library never reports that. */
  void Expect(int32 positionMs);
  void ExpectNothing();
  /** The position of a song that goes on from here cannot be computed from earlier ones. */
  void Jumped() { fJoin.Jumped(fMs); }
  /** It may change shortly, even while the song is paused. */
  void Moves();
  /** The sound is interrupted where the library is at `seconds`. Returns where it is to go on: there, or where the song
      was sought to but is not heard yet. */
  int32 Interrupted(double seconds);
  /** What was expected is heard. */
  void Arrived();

  /** The library has begun the song that follows; the end of this one is still to be heard. */
  void BeginJoin() { fJoin.Begin(); }
  bool IsJoinPending() const { return fJoin.IsPending(); }
  /** Takes the library's position during a join; true once the follower is heard. */
  bool FollowerIsHeard(double seconds);
  /** Returns where the song ended. */
  int32 FinishJoin();

private:
  std::optional<int32> Reused() const;
  void Keep(std::optional<double> seconds, bigtime_t askedUs);
  int32 From(std::optional<double> seconds);

  const TClock fClock;
  std::atomic<int32> fMs{0};
  std::atomic<double> fBiasMs{0};
  std::atomic<double> fSpeed{1};
  TSongJoin fJoin;
  TTimedQuestion fQuestion;
  mutable std::mutex fSteadyMutex; // guards fSteadyPlay
  TSteadyPlay fSteadyPlay;
  std::atomic<bigtime_t> fExpectedUntil{0};
  std::atomic<bool> fPaused{false};
  std::atomic<bool> fHasRange{false};
  std::atomic<bigtime_t> fMovesUntil{0};
  std::atomic<int64> fLastMove{0};
  /** The value of fLastMove since which the position of a paused song is known. */
  std::atomic<int64> fKnownSince{-1};
};
