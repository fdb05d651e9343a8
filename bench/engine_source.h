#pragma once

#include "bench/audio_conditions.h"
#include "player/sound/song_source.h"

/** The player's own source of sound and position, without the player's windows and protocol. */
class TEngineSource : public TPositionSource {
public:
  explicit TEngineSource(const TSoundChoices& choices = {}, std::vector<int32> clicksMs = {})
      : fEngine(make_mpv_source(&fEvents)) {
    fEngine->SetSound(choices);
    fEngine->SetClicks(std::move(clicksMs));
  }
  void Play(const std::string& path) override;
  void Seek(double seconds) override { fEngine->SeekTo(static_cast<int32>(seconds * 1000)); }
  void SetPaused(bool paused) override { fEngine->SetPaused(paused); }
  void SetSpeed(double speed) override { fEngine->SetSpeed(speed); }
  double PositionSec() override { return fEngine->PositionMs() / 1000.0; }

private:
  class TDeafEvents : public TSongEvents {
    void SongLoaded(int64, const TSongTags&) override {}
    void SongEnded(int64) override {}
    void SongFailed(int64, const std::string&) override {}
  };
  TDeafEvents fEvents;
  std::shared_ptr<TSongSource> fEngine;
};
