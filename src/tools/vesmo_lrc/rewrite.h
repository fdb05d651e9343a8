#pragma once

#include "lyrics/exact_lyrics.h"
#include "tools/vesmo_lrc/options.h"

/** The result of a command for a file. */
struct TRewritten {
  std::optional<std::string> bytes; // empty if the file is left unchanged,
  std::string refusal;              // because of this
  std::list<std::string> lines;     // UTF-8; the number of lines is unchanged
  std::string form;                 // the new encoding and line end, as from `form_of`
  size_t bracketsLeft = 0;          // lines whose bracket is a tag for the editor but not for this tool
};

/** For the commands that change files. Refuses changes that lose data. Thread-safe. */
TRewritten rewrite(const TExactLyrics& lyrics, const TOptions& options);

std::string encoding_name(TEncoding encoding);

/** Which time tags occur: "family", "common", "mixed" or "none". */
const char* dialect_of(const TExactLyrics& lyrics);

/** Encoding and line end, such as "Shift-JIS, CR LF". */
std::string form_of(const TExactLyrics& lyrics);

/** Why the text cannot be processed; empty if it can. */
std::string unreadable_text(const TExactLyrics& lyrics);
