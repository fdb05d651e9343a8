#pragma once

#include "platform/support/types.h"

#include <string>

/** What the player's parts report to the application. Called on the application's thread. */
class TPlayerEvents {
public:
  TPlayerEvents() = default;
  TPlayerEvents(const TPlayerEvents&) = delete;
  TPlayerEvents& operator=(const TPlayerEvents&) = delete;

  /** Something that the window or the desktop shows is different. */
  virtual void StateChanged() = 0;
  virtual void ErrorOccurred(const std::string& error) = 0;
  /** The same, shown until the song after the next one can be heard. */
  virtual void SongErrorOccurred(const std::string& error) = 0;
  /** That error no longer matters. */
  virtual void ErrorResolved(const std::string& error) = 0;
  /** The errors shown so far no longer matter. */
  virtual void ErrorsResolved() = 0;
  /** The user has chosen what to play, which cancels whatever was to be played once found. */
  virtual void UserChose() = 0;
  /** A song of the list begins: this player's own sound is the source. */
  virtual void SongBegins() = 0;
  /** The sound could begin the song of the list. */
  virtual void SongIsHeard() = 0;
  /** The song of the list was sought to there. */
  virtual void SongSought(int32 positionMs) = 0;
  /** Shown at once rather than at the next tick. */
  virtual void PositionJumped(int32 positionMs) = 0;

protected:
  ~TPlayerEvents() = default;
};
