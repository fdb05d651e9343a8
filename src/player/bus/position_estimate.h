#pragma once

#include "platform/support/types.h"

#include <deque>
#include <optional>

/** One question for a player's position. Times in µs of the monotonic clock, the position in µs of the song. */
struct TPositionAnswer {
  bigtime_t askedUs;
  bigtime_t answeredUs;
  int64 positionUs;
};

/** Where another player's song is, reckoned from answers that may be old, rounded or wrong.
    Players renew the position they tell only now and then (every 40 ms, every quarter of a second, every second), so an
    answer is seldom ahead of the song and mostly behind it; right after it was renewed it is true. So questions come in
    bursts that last until the answer changes, and of the lines that the answers give the foremost counts, less one that
    may be astray. Pure; one thread at a time. */
class TPositionEstimate {
public:
  /** The song is there now, or was sought to there: what was known or asked before is void. */
  void Begin(bigtime_t nowUs, int64 positionUs);
  void SetPlaying(bigtime_t nowUs, bool isPlaying);
  void SetRate(bigtime_t nowUs, double rate);
  /** 0: unknown, and nothing bounds the position. */
  void SetDuration(int64 durationUs) { fDurationUs = durationUs; }
  void Take(const TPositionAnswer& answer);

  int64 PositionUs(bigtime_t nowUs) const;
  /** When the next question would tell most. */
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
  bool fStands = false; // said to play, yet its position does not move
  double fRate = 1;
  int64 fDurationUs = 0;
  // position = fBaseUs + rate * (now - fBaseAtUs) while the song moves, else fBaseUs
  bigtime_t fBaseAtUs = 0;
  double fBaseUs = 0;
  bigtime_t fBeganUs = 0;
  // Of the answers since the last beginning:
  std::optional<int64> fLastUs;  // the last one
  bigtime_t fLastAtUs = 0;       // when it was given
  bigtime_t fChangedAtUs = 0;    // when the answer was last another
  int64 fStepUs = 0;             // by how much the player moves what it tells; 0: not seen yet
  std::optional<double> fAstray; // the line of an answer far from all others
  int fAsked = 0;                // questions of this burst
  bigtime_t fNextBurstUs = 0;
  double fBurstBest = 0;
  bool fBurstHasBest = false;
  /** The foremost line of each of the last bursts: where the song would be at time 0 of the clock. */
  std::deque<double> fLines;
};
