#pragma once

#include "platform/support/types.h"

#include <memory>

class BHandler;
class BMessageRunner;
class Sonivo_FrontEnd;

/** Plays the beginning of a line whose tag was nudged, so that its new time can be heard. A song that is playing goes
   on from there; a paused one is paused again half a second later. Belongs to a view, on its window's thread. */
class TNudgeReplay {
public:
  /** `view` gets kMsgReplayBeat and passes it to `Beat`. Neither is owned. */
  TNudgeReplay(const BHandler* view, Sonivo_FrontEnd* frontEnd);
  ~TNudgeReplay();

  /** Begins shortly after the last of several nudges. */
  void Nudged(int32 timeMs);
  void Beat();
  /** The user has used the player: it is left as it is. */
  void Cancel();

private:
  const BHandler* const fView;
  Sonivo_FrontEnd* const fFrontEnd;
  std::unique_ptr<BMessageRunner> fRunner;
  int32 fTimeMs = 0;
  bigtime_t fReplaysUntilUs = 0; // then a song that was paused is paused again
};
