#pragma once

#include "player/app/command_line.h"

/** Hands the command line to a running player, which comes to the front. False if there is none or it does not answer
    in time: then this process plays. Blocks for three seconds at most. */
bool hand_over(const TCommandLine& line);
