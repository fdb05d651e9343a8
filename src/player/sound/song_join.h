#pragma once

#include "platform/support/types.h"

#include <mutex>
#include <optional>

/** The end of a song that another one follows without a gap. The library begins the follower once it has decoded the
    end of the song, of which a fifth of a second may still be in the output buffer. From then on it reports positions
    of the follower, negative until its sound begins, from which the position in the ending song follows.
    Thread-safe. */
class TSongJoin {
public:
  /** A position of the only song that plays, as reported just now. */
  void Heard(double positionMs, bigtime_t nowUs);
  /** The song was sought to there, paused or resumed: its position cannot be extrapolated until the next report. */
  void Jumped(double positionMs);

  /** The library begins the follower. */
  void Begin();
  bool IsPending() const;
  /** The position in the ending song; `followerMs` is what the library reports, if anything. */
  int32 PositionMs(std::optional<double> followerMs, double speed, bigtime_t nowUs);
  /** The follower is heard. Returns the position at which the song ended. */
  int32 Finish(double speed, bigtime_t nowUs);

private:
  double ExtrapolatedMs(double speed, bigtime_t nowUs) const;

  mutable std::mutex fMutex; // guards all members
  double fHeardMs = 0;
  bigtime_t fHeardUs = 0; // when; 0 after a jump
  bool fIsPending = false;
  std::optional<double> fEndMs; // of the ending song, once known
};
