#pragma once

#include "tools/vesmo_lrc/options.h"

/** Does what the options ask for, and returns what the program ends with. */
int run(const TOptions& options);
