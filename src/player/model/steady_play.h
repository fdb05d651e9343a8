#pragma once

#include "platform/support/types.h"

#include <optional>

/** The position of the song, as it was read at a moment of the monotonic clock. */
struct TReadPosition {
  bigtime_t atUs = 0;
  int64 positionUs = 0;
  int32 speedPercent = 100;
  bool isPlaying = false;
};

/** Computes where the song was shortly before, or is shortly after, the positions that were read: a position other than
    the earlier ones lead to shows a pause, a seek or another song in between. Pure; one thread at a time. */
class TSteadyPlay {
public:
  void Add(const TReadPosition& read);
  /** At most five seconds before the last position. Nothing unless the song is known to have played without
      interruption, at the same speed, since then. */
  std::optional<int32> PositionMsAt(bigtime_t whenUs) const;
  /** At most 90 ms after the last position. Nothing unless several positions have shown that the song plays. */
  std::optional<int32> PositionMsSoon(bigtime_t nowUs) const;

private:
  bool Continues(const TReadPosition& read) const;

  TReadPosition fLast;
  TReadPosition fAnchor; // an earlier one, which later ones are compared with
  bigtime_t fSinceUs = 0;
};
