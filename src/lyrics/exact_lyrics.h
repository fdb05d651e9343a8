#pragma once

#include "lyrics/lyrics_form.h"

#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** A lyrics file that is changed line by line: a line that stays the same is written back byte for byte, with its own
    line end. Unlike `load_lyrics` this drops nothing: each CR LF, LF or CR ends a line, converted text is never cut,
   and what follows a NUL is kept. One thread at a time. */
class TExactLyrics {
public:
  struct TLine {
    std::string_view bytes; // as in the file
    std::string_view end;   // "\n", "\r\n", "\r", or empty at the end of the file
  };

  /** Detects the encoding when none is given. */
  TExactLyrics(std::string bytes, std::optional<TEncoding> encoding);
  TExactLyrics(const TExactLyrics&) = delete;
  TExactLyrics& operator=(const TExactLyrics&) = delete;

  const std::string& Bytes() const { return fBytes; }
  TEncoding Encoding() const { return fEncoding; }
  bool HasByteOrderMark() const { return fHasByteOrderMark; }
  /** UTF-16, which is not supported. */
  bool IsUtf16() const;
  /** From the first NUL on; empty without one. */
  std::string_view Rest() const { return fRest; }
  const std::vector<TLine>& Layout() const { return fLayout; }
  /** In UTF-8, without byte-order mark; as many as in the layout. */
  const std::list<std::string>& Lines() const { return fLines; }
  /** Indices of the lines that are not valid in the encoding. */
  std::vector<size_t> BrokenLines() const;

  /** The file with these lines, as many as it has, in its own encoding; nothing when that cannot hold one of them. */
  std::optional<std::string> WithLines(const std::list<std::string>& lines) const;
  /** The text in another encoding, without byte-order mark and NUL, with `lineEnd`, if given, in place of each line's
      own. Nothing when the encoding cannot hold it. */
  std::optional<std::string> InEncoding(TEncoding encoding, std::optional<std::string_view> lineEnd) const;

private:
  void Split(std::string_view text);

  const std::string fBytes;
  TEncoding fEncoding;
  bool fHasByteOrderMark;
  std::string_view fRest;
  std::vector<TLine> fLayout;
  std::list<std::string> fLines;
};

/** A line in an encoding; nothing when the encoding lacks one of its characters. */
std::optional<std::string> encoded_line(const std::string& line, TEncoding encoding);

/** The characters that the encoding cannot hold, each once, in order; a byte that is not UTF-8 as `\xE3`. */
std::vector<std::string> characters_outside(const std::string& line, TEncoding encoding);
std::vector<std::string> characters_outside(const std::vector<std::string>& lines, TEncoding encoding);
