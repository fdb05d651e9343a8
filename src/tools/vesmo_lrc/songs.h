#pragma once

#include "tools/vesmo_lrc/outcome.h"

/** Lyrics inside songs. Thread-safe with one batch per thread. */

/** Writes the song's lyrics to `path`, or to standard output if that is empty. A song without lyrics is an error only
   if it was named, rather than found in a folder. */
TOutcome extract_lyrics(const TOptions& options, const TInput& input, const std::string& path, size_t id,
                        TReplacementBatch* batch);
/** Writes the lyrics next to the song, or those that were named, into the song. */
TOutcome embed_lyrics(const TOptions& options, const TInput& input);
