#pragma once

#include "bench/audio_conditions.h"

struct mpv_handle;

/** The audio library by itself, asked without anything between. */
class TLibrarySource : public TPositionSource {
public:
  /** `stretcher` is the library's filter for speeds other than 1; empty for its own choice. */
  explicit TLibrarySource(std::string stretcher);
  ~TLibrarySource() override;
  void Play(const std::string& path) override;
  void Seek(double seconds) override;
  void SetPaused(bool paused) override;
  void SetSpeed(double speed) override;
  double PositionSec() override;

private:
  mpv_handle* fMpv;
  const std::string fStretcher;
};
