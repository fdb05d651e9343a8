#pragma once

#include "demo/sink_recorder.h"

#include <optional>
#include <vector>

/** Tells which moment of a song is heard when, by finding the recorded sound in the song itself.
    Asks no program what it believes. One thread. */
class TSongClock {
public:
  TSongClock(std::vector<float> song, const TSinkRecorder& recorder);

  /** Waits until the song's first seconds are heard, after it was begun at `begunUs`; false if that takes longer than
      `patienceSec`. */
  [[nodiscard]] bool WaitForStart(int64_t begunUs, double patienceSec);
  /** Follows the sound: compares what was heard last with the song. Call it every second or so. */
  void Follow();
  /** When the moment `songSec` will be heard (monotonic, µs), if the song goes on as it goes. */
  int64_t HeardAtUs(double songSec) const;
  /** Which moment of the song was put out at `us`; nothing if what was heard is not the song. */
  std::optional<double> SongSecAt(int64_t us) const;

private:
  std::optional<double> FindIn(const std::vector<float>& heard, size_t middle, double aroundSec, double rangeSec) const;

  std::vector<float> fSong;
  const TSinkRecorder& fRecorder;
  int64_t fZeroUs = 0; ///< when the song's first sample was heard
};
