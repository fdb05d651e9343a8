#pragma once

#include "player/model/song_tags.h"

#include <memory>
#include <string>

/** Told what happens to the song. Called on a thread of the source, which must not be kept waiting. `load` is the
   number that `Load` gave, so that news of a song that was replaced meanwhile can be told apart. */
class TSongEvents {
public:
  TSongEvents() = default;
  TSongEvents(const TSongEvents&) = delete;
  TSongEvents& operator=(const TSongEvents&) = delete;
  virtual ~TSongEvents() = default;
  virtual void SongLoaded(int64 load, const TSongTags& tags) = 0;
  virtual void SongEnded(int64 load) = 0;
  virtual void SongFailed(int64 load, const std::string& reason) = 0;
  /** Whether the sound is lost from now on, for there is no device for it; the song plays in real time all the same. */
  virtual void OutputChanged(bool /*isSilent*/) {}
};

/** What can be done with a song that is there, whoever puts out its sound. None of it waits for the sound. */
class TSongControl {
public:
  TSongControl() = default;
  TSongControl(const TSongControl&) = delete;
  TSongControl& operator=(const TSongControl&) = delete;
  virtual ~TSongControl() = default;

  virtual void SetPaused(bool paused) = 0;
  virtual void SeekTo(int32 positionMs) = 0;
  /** 1 is the song's own speed; the pitch is kept. */
  virtual void SetSpeed(double speed) = 0;
  /** 0 to 100. */
  virtual void SetVolume(double percent) = 0;
  /** Plays this part again and again, exactly, from when it reaches its end; -1 for either end: no longer. The next
      song does not forget it. A source that cannot do that plays on. */
  virtual void SetRepeat(int32 /*fromMs*/, int32 /*toMs*/) {}
  /** The moment of the song that is heard now, in ms; the last one known while nothing is heard. */
  virtual int32 PositionMs() = 0;
};

/** Where the player's own sound and its position come from. Every call from any thread. */
class TSongSource : public TSongControl {
public:
  /** Begins the song, replacing what plays. Returns the number of this load. */
  virtual int64 Load(const std::string& path, bool paused) = 0;
  virtual void Stop() = 0;
};

/** The audio library's source. The library is loaded at the first song, on a thread of its own. Letting go of the
   source waits for that thread, but no longer than two seconds: a sound server that hangs keeps the library from
   ending. The thread is left behind then, and `events` is not called any more. */
std::shared_ptr<TSongSource> make_mpv_source(TSongEvents* events);
