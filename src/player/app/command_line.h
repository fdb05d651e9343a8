#pragma once

#include <string>
#include <vector>

/** What the user asked for on the command line. */
struct TCommandLine {
  std::vector<std::string> songs; // files and folders
  std::string lyrics;             // to be opened in the editor; empty for none
  std::string source;             // another player, to be the source; empty for none
  bool startsPaused = false;
  bool isAnother = false; // beside a player that runs already
  /** Set: print this and end. `fault` tells which exit code and stream it takes. */
  std::string text;
  bool fault = false;
};

TCommandLine parse_command_line(int argc, const char* const* argv);
