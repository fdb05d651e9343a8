#pragma once

#include "demo/sink_recorder.h"

#include <optional>
#include <vector>

/** Maps song positions to the time they are heard, by locating the recorded sound in the song; independent of what any
    program reports. Not thread-safe. */
class TSongClock {
public:
  TSongClock(std::vector<float> song, const TSinkRecorder& recorder);

  /** Waits until the first seconds of the song, which was started at `begunUs`, are heard; false on a time-out. */
  [[nodiscard]] bool WaitForStart(int64_t begunUs, double timeoutSec);
  /** Resynchronizes with the latest sound. To be called about once a second. */
  void Follow();
  /** When `songSec` will be heard (monotonic, µs) if the song plays on. */
  int64_t HeardAtUs(double songSec) const;
  /** The song position that was output at `us`; empty if the sound is not the song's. */
  std::optional<double> SongSecAt(int64_t us) const;

private:
  std::optional<double> FindIn(const std::vector<float>& heard, size_t middle, double aroundSec, double rangeSec) const;

  std::vector<float> fSong;
  const TSinkRecorder& fRecorder;
  int64_t fZeroUs = 0; ///< when the song's first sample was heard
};
