#pragma once

#include "player/model/player_choices.h"

#include <string>

/** The audio library's own filters for balance and equalizer, as a filter chain for its option "af"; empty if nothing
   is to be changed. None of them delays the sound, so the position stays exact. Pure. */
std::string sound_filters(const TSoundChoices& choices);
