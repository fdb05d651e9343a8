#pragma once

#include "player/model/player_state.h"
#include "player/model/song_part.h"

/** Play, pause, seek and the rest, for the song of whichever player is the source. No call waits. Application's
    thread. */
class TTransport {
public:
  TTransport() = default;
  TTransport(const TTransport&) = delete;
  TTransport& operator=(const TTransport&) = delete;
  virtual ~TTransport() = default;

  virtual TPlayback Playback() const = 0;
  virtual int32 PositionMs() = 0;

  virtual void PlayPause() = 0;
  /** To the next song (1) or the previous one (-1). */
  virtual void Skip(int direction) = 0;
  /** The same as the desktop expects it: a song that is paused is followed by one that is paused. */
  virtual void SkipAsItIs(int direction) { Skip(direction); }
  /** Bounded to the song. */
  virtual void Seek(int64 positionMs) = 0;
  /** Bounded to the song; ignored if too little remains. The song pauses at the beginning of the part afterwards,
     unless the user has sought, paused or changed the song meanwhile. */
  virtual void PlayPart(const TSongPart& part) = 0;
  /** Ends the part that is played, as its own end would; ignored if there is none. */
  virtual void EndPart() = 0;
  /** Bounded to 25 to 200. */
  virtual void SetSpeed(int64 percent) = 0;
  /** Bounded to 0 to 100. */
  virtual void SetVolume(int32 percent) = 0;
  /** kMsgRepeatFrom, kMsgRepeatTo: sets that end of the A-B repeat to the position of `agoMs`
      ago; kMsgRepeatOff. */
  virtual void SetRepeat(uint32 /*request*/, int32 /*agoMs*/) {}
};

inline constexpr int64 kSlowestPercent = 25;
inline constexpr int64 kFastestPercent = 200;
