#pragma once

#include "tools/vesmo_lrc/options.h"

/** Runs the command and returns the exit code. */
int run(const TOptions& options);
