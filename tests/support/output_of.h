#pragma once

#include <cstdio>
#include <string>

/** What a command prints, without its last line end. */
inline std::string output_of(const std::string& command) {
  std::string output;
  FILE* const pipe = popen(command.c_str(), "r");
  for (int c = 0; pipe && (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  if (pipe) pclose(pipe);
  if (output.ends_with('\n')) output.pop_back();
  return output;
}
