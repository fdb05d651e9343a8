#pragma once

#include "player/model/player_choices.h"
#include "player/model/song_part.h"
#include "player/model/song_tags.h"

#include <memory>
#include <string>
#include <vector>

/** Callbacks of a source, on its own thread; they must not block. `load` is the number that `Load` returned, so that
    reports about a song that was replaced meanwhile can be discarded. */
class TSongEvents {
public:
  TSongEvents() = default;
  TSongEvents(const TSongEvents&) = delete;
  TSongEvents& operator=(const TSongEvents&) = delete;
  virtual ~TSongEvents() = default;
  virtual void SongLoaded(int64 load, const TSongTags& tags) = 0;
  virtual void SongEnded(int64 load) = 0;
  /** `load` ended at that position, and `next`, which Follow had queued, has begun without a gap. */
  virtual void SongJoined(int64 /*load*/, int64 /*next*/, int32 /*endedMs*/) {}
  virtual void SongFailed(int64 load, const std::string& reason) = 0;
  /** The part has been heard: the song is paused at its beginning. `part` is the number that PlayPart returned. */
  virtual void PartEnded(int64 /*part*/) {}
  /** `isSilent`: there is no sound device; the song plays on in real time without sound. */
  virtual void OutputChanged(bool /*isSilent*/) {}
  virtual void DevicesFound(const std::vector<TSoundDevice>& /*devices*/) {}
  /** The chosen device cannot be used: the song plays on the default one. `device` is its description if that is
      known, else its name. */
  virtual void DeviceLost(const std::string& /*device*/) {}
  /** The song plays on the chosen device again. */
  virtual void DeviceReturned(const std::string& /*device*/) {}
};

/** Controls a loaded song, whichever player outputs its sound. No call waits for the sound. */
class TSongControl {
public:
  TSongControl() = default;
  TSongControl(const TSongControl&) = delete;
  TSongControl& operator=(const TSongControl&) = delete;
  virtual ~TSongControl() = default;

  virtual void SetPaused(bool paused) = 0;
  virtual void SeekTo(int32 positionMs) = 0;
  /** 1 is normal speed; the pitch is kept. */
  virtual void SetSpeed(double speed) = 0;
  /** 0 to 100. */
  virtual void SetVolume(double percent) = 0;
  /** A-B repeat, sample-accurate, from the next time `toMs` is reached; -1 for either end stops it. Stays set for the
      next song. Ignored by sources that do not support it. */
  virtual void SetRepeat(int32 /*fromMs*/, int32 /*toMs*/) {}
  /** The position that is heard now, in ms; the last known one while nothing is heard. */
  virtual int32 PositionMs() = 0;
};

/** Plays the player's own sound and knows its position. Thread-safe. */
class TSongSource : public TSongControl {
public:
  /** Begins the song, replacing the current one. Returns the number of this load, which differs each time. */
  virtual int64 Load(const std::string& path, bool paused) = 0;
  virtual void Stop() = 0;
  /** Queues the song that follows the current one without a gap, replacing the one queued before; an empty path for
      none. Load and Stop clear the queue, too. Returns the load number of that song. */
  virtual int64 Follow(const std::string& /*path*/) { return 0; }
  /** Plays this part of the loaded song, to the sample, from now on. Ends by itself, or by any other call that seeks,
      pauses or loads. Returns the number of this part, which differs each time. */
  virtual int64 PlayPart(const TSongPart& /*part*/) { return 0; }
  /** Mixes a click into the sound at these times of the song (ms, ascending), from a moment later on; empty for none.
      Stays set for the next song. */
  virtual void SetClicks(const std::vector<int32>& /*timesMs*/) {}
  virtual void SetSound(const TSoundChoices& /*choices*/) {}
  /** The audio library has not answered for some seconds, as when the sound server hangs. Known while the position is
      asked for. */
  virtual bool IsHanging() const { return false; }
  /** Reported by DevicesFound. */
  virtual void FindDevices() {}
};

/** A source over the audio library, which is loaded lazily, at the first song, on a thread of its own. Releasing the
    source waits for that thread for two seconds at most, since a sound server that hangs keeps the library from
    ending; after that the thread is abandoned. `events` is not called after the release. */
std::shared_ptr<TSongSource> make_mpv_source(TSongEvents* events);
