#pragma once

#include <string>
#include <vector>

/** The parsed command line. */
struct TCommandLine {
  std::vector<std::string> songs; // files and folders
  std::string lyrics;             // opened in the editor; empty for none
  std::string source;             // id of another player to use as the source; empty for none
  bool startsPaused = false;
  bool isAnother = false; // a new player, even if one is running
  /** If not empty, print this and exit; an error goes to standard error with another exit code. */
  std::string text;
  bool error = false;
};

TCommandLine parse_command_line(int argc, const char* const* argv);
