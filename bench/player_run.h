#pragma once

#include "bench/audio_conditions.h"

#include <string>
#include <vector>

/** Starts the real player with these words for `seconds` and returns what its front-end protocol answered to the probe
    plug-in that stands in the player's plug-in folder. Throws std::runtime_error if the player tells no position. */
std::vector<TProbe> probe_player(const std::string& player, std::vector<std::string> words, double seconds);
