#pragma once

#include "lyrics/exact_lyrics.h"
#include "tools/vesmo_lrc/options.h"

/** What a command makes of a file. Pure: any thread. */
struct TRewritten {
  std::optional<std::string> bytes; // nothing when the file is left alone,
  std::string refusal;              // because of this
  std::list<std::string> lines;     // in UTF-8, as many as before
  std::string form;                 // how the text then lies in the file, as `form_of` says it
  size_t bracketsLeft = 0;          // lines with a bracket that the editor, but not this tool, takes for a tag
};

/** For the commands that change files. Refuses what would lose something. */
TRewritten rewrite(const TExactLyrics& lyrics, const TOptions& options);

std::string encoding_name(TEncoding encoding);

/** "Shift-JIS, CR LF": how the text lies in the file. */
std::string form_of(const TExactLyrics& lyrics);

/** Why the text cannot be worked on; empty when it can. */
std::string unreadable_text(const TExactLyrics& lyrics);
