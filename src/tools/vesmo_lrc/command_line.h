#pragma once

#include "tools/vesmo_lrc/options.h"

/** Options, or what to say instead and how to end. */
struct TParsedLine {
  std::optional<TOptions> options;
  std::string text;
  int exitCode = kExitFine;
};

/** Options may stand before, between and behind the files; "--" ends them. Reorders `argv`; one thread at a time. */
TParsedLine parse_command_line(int argc, char** argv);
