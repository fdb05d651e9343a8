#pragma once

#include "tools/vesmo_lrc/options.h"

/** The options, or a text to print and the exit code. */
struct TParsedLine {
  std::optional<TOptions> options;
  std::string text;
  int exitCode = kExitFine;
};

/** Options may precede, follow or be mixed with the files; "--" ends them. Reorders `argv`. Not thread-safe. */
TParsedLine parse_command_line(int argc, char** argv);
