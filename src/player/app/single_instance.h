#pragma once

#include "player/app/command_line.h"

/** Hands what is on the command line to the player that runs already, which comes to the front. False when there is
   none or it does not answer in time: then this one plays. */
bool hand_over(const TCommandLine& line);
