#pragma once

#include <cstdint>
#include <string>
#include <vector>

constexpr double kTrackSeconds = 60;

/** One question to the source: when it was asked and what it said. */
struct TProbe {
  int64_t atUs; ///< monotonic
  double positionSec;
  bool frozen = false; ///< asked in a pause: what counts is the sound heard last
};

/** What is measured: anything that plays a file and says where it is. */
class TPositionSource {
public:
  virtual ~TPositionSource() = default;
  virtual void Play(const std::string& path) = 0; ///< returns when it is heard playing
  virtual void Seek(double seconds) = 0;
  virtual void SetPaused(bool paused) = 0;
  virtual void SetSpeed(double speed) = 0;
  virtual double PositionSec() = 0;
};

/** How a track is played while the position is asked for, written "play", "seeks" or "paused", then "@0.75" for
    another speed, which is set while it plays. */
struct TCondition {
  std::string name, action;
  double speed;
};

/** Throws std::runtime_error for text that is none. */
TCondition parse_condition(const std::string& text);

/** Plays and asks; takes about a quarter of a minute. */
std::vector<TProbe> run_condition(const TCondition& condition, TPositionSource& source, const std::string& path);
