#pragma once

#include "bench/audio_conditions.h"

#include <string>
#include <vector>

/** Plays `trackPath` in the real player for `seconds` and returns what its front-end protocol answered to the probe
    plug-in that stands in the player's plug-in folder. Throws std::runtime_error if the player does not play. */
std::vector<TProbe> probe_player(const std::string& player, const std::string& trackPath, double seconds);
