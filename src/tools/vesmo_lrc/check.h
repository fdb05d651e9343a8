#pragma once

#include "lyrics/exact_lyrics.h"
#include "tools/vesmo_lrc/options.h"

/** Something that other players may read differently than meant. */
struct TFinding {
  size_t line = 0; // from 1; 0: the whole file
  const char* code = "";
  std::string message;
};

/** In the order of the lines, those of the whole file first. Pure: any thread. */
std::vector<TFinding> check(const TExactLyrics& lyrics, const TOptions& options);
