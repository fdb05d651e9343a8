#pragma once

#include "player/model/player_choices.h"

#include <string>
#include <vector>

struct mpv_handle;

/** What the audio library does with the sound before it puts it out: speed, filters and ReplayGain. Used
   by the source's thread only, since a sound server that hangs blocks the library. */
class TSoundChain {
public:
  /** `mpv` outlives the last call. */
  void Begin(mpv_handle* mpv) { fMpv = mpv; }
  void Apply(const TSoundChoices& choices);
  /** A click at each of these times of the song (ms, ascending). */
  void SetClicks(const std::vector<int32>& timesMs);
  /** Returns by how many ms the reported position is ahead of the sound at that speed. */
  double SetSpeed(double speed);

private:
  bool SetFilters(const std::string& filters);
  void UpdateFilters();
  void SetText(const char* name, const std::string& value);

  mpv_handle* fMpv = nullptr;
  TSoundChoices fChoices;
  double fSpeed = 1;
  bool fHasStretchFilter = false;
  std::string fClicks;  // filter; empty for none
  std::string fFilters; // as set
};
