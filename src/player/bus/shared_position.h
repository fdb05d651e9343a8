#pragma once

#include "player/bus/position_estimate.h"

#include <functional>
#include <mutex>

/** The position of another player's song, reckoned on the bus's thread and read by any. Whoever reads it is what keeps
    the questions to that player going. */
class TSharedPosition {
public:
  /** `wake` is called, on a reading thread, when somebody reads after nobody did for a while. */
  void OnNeed(std::function<void()> wake);
  void Change(const std::function<void(TPositionEstimate&)>& change);
  int32 PositionMs();

  /** -1: nobody has read lately, so nothing need be asked. */
  bigtime_t NextQuestionUs();

private:
  std::mutex fMutex; // guards all
  TPositionEstimate fEstimate;
  std::function<void()> fWake;
  bigtime_t fReadUs = 0;
  bool fIsAsleep = true;
};
