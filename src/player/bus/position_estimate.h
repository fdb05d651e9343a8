#pragma once

#include "platform/support/types.h"

#include <deque>
#include <optional>

/** One poll of a player's position. Times in µs of the monotonic clock, the position in µs of the song. */
struct TPositionAnswer {
  bigtime_t askedUs;
  bigtime_t answeredUs;
  int64 positionUs;
};

/** Estimates the position of another player's song from answers that may be stale, rounded or wrong.
    Players update the position they report only every 40 ms, 250 ms or second, so an answer is mostly behind the song,
    and correct right after an update. Polling therefore comes in bursts that last until the answer changes. Each burst
    yields a line (the extrapolated position at clock time 0); the estimate follows the foremost line, or the second
    foremost once there are enough lines to discard an outlier. Pure; not thread-safe. */
class TPositionEstimate {
public:
  /** The song is now at that position, or was sought to it: discards all answers, also those still to come. */
  void Begin(bigtime_t nowUs, int64 positionUs);
  void SetPlaying(bigtime_t nowUs, bool isPlaying);
  void SetRate(bigtime_t nowUs, double rate);
  /** 0 if unknown: the position is unbounded. */
  void SetDuration(int64 durationUs) { fDurationUs = durationUs; }
  void Take(const TPositionAnswer& answer);

  int64 PositionUs(bigtime_t nowUs) const;
  /** When the next poll is most informative. */
  bigtime_t NextQuestionUs(bigtime_t nowUs) const;

private:
  void ForgetAnswers();
  void TakePaused(int64 positionUs);
  void TakeSame(const TPositionAnswer& answer);
  void TakeMoved(bigtime_t atUs, int64 positionUs);
  bool IsJump(bigtime_t atUs, int64 positionUs);
  void NoteLine(double originUs);
  void FollowLines();
  void EndBurst(bigtime_t nowUs, bool sawChange);
  double OriginOf(bigtime_t atUs, int64 positionUs) const;
  int64 Bounded(double positionUs) const;

  bool fIsPlaying = false;
  bool fIsStalled = false; // reported as playing, but the position does not move
  double fRate = 1;
  int64 fDurationUs = 0;
  // position = fBaseUs + rate * (now - fBaseAtUs) while the song moves, else fBaseUs
  bigtime_t fBaseAtUs = 0;
  double fBaseUs = 0;
  bigtime_t fBeganUs = 0;
  // The answers since Begin:
  std::optional<int64> fLastUs;    // the last answer
  bigtime_t fLastAtUs = 0;         // its time
  bigtime_t fChangedAtUs = 0;      // when the answer last changed
  int64 fStepUs = 0;               // update interval of the reported position; 0 if unknown
  std::optional<double> fJumpLine; // line of an answer far from the estimate
  int fAsked = 0;                  // polls of this burst
  bigtime_t fNextBurstUs = 0;
  double fBurstBest = 0;
  bool fBurstHasBest = false;
  /** The foremost line of each recent burst. */
  std::deque<double> fLines;
};
