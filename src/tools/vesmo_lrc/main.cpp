/** vesmo-lrc: checks, changes and exports timed lyrics. */

#include "tools/vesmo_lrc/command_line.h"
#include "tools/vesmo_lrc/run.h"
#include "tools/vesmo_lrc/stop.h"

#include <cstdio>

int main(int argc, char** argv) {
  const TParsedLine line = parse_command_line(argc, argv);
  if (!line.options) {
    std::fputs(line.text.c_str(), line.exitCode == kExitFine ? stdout : stderr);
    return line.exitCode;
  }
  catch_signals();
  return run(*line.options);
}
