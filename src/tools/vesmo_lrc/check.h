#pragma once

#include "lyrics/exact_lyrics.h"
#include "tools/vesmo_lrc/options.h"

/** Something that other players may interpret differently. */
struct TFinding {
  size_t line = 0; // from 1; 0: the whole file
  const char* code = "";
  std::string message;
};

/** Sorted by line, those of the whole file first. Thread-safe. */
std::vector<TFinding> check(const TExactLyrics& lyrics, const TOptions& options);
