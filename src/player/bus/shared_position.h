#pragma once

#include "player/bus/position_estimate.h"

#include <functional>
#include <mutex>

/** The estimated position of another player's song: updated on the bus's thread, read on any. The other player is
    polled only while somebody reads. Thread-safe. */
class TSharedPosition {
public:
  /** `wake` is called on the reading thread by the first read after a pause in reading. */
  void OnNeed(std::function<void()> wake);
  void Change(const std::function<void(TPositionEstimate&)>& change);
  int32 PositionMs();

  /** Time of the next poll; -1 if nobody has read lately. */
  bigtime_t NextQuestionUs();

private:
  std::mutex fMutex; // guards fEstimate, fWake, fReadUs, fIsAsleep
  TPositionEstimate fEstimate;
  std::function<void()> fWake;
  bigtime_t fReadUs = 0;
  bool fIsAsleep = true;
};
