#pragma once

#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** A lyrics file as its bytes have it, to be changed in places: a line that stays the same is written back byte for
    byte, with the line end it had. Unlike the editor's reading nothing is dropped: each CR LF, LF or CR ends a line,
    converted text is never cut, and what follows a NUL is kept. One thread at a time. */
class TExactLyrics {
public:
  struct TLine {
    std::string_view bytes; // as in the file
    std::string_view end;   // "\n", "\r\n", "\r", or nothing behind the last line
  };

  /** `readEncoding` is 0 to 2, or kDetectEncoding. */
  TExactLyrics(std::string bytes, long readEncoding);
  TExactLyrics(const TExactLyrics&) = delete;
  TExactLyrics& operator=(const TExactLyrics&) = delete;

  const std::string& Bytes() const { return fBytes; }
  long Encoding() const { return fEncoding; }
  bool HasByteOrderMark() const { return fHasByteOrderMark; }
  /** Sixteen bits a character: none of the encodings that are read here. */
  bool IsUtf16() const;
  /** From the first NUL on; empty where there is none. */
  std::string_view Rest() const { return fRest; }
  const std::vector<TLine>& Layout() const { return fLayout; }
  /** In UTF-8, without byte-order mark; as many as in the layout. */
  const std::list<std::string>& Lines() const { return fLines; }
  /** The lines (from 0) that are not text in the encoding. */
  std::vector<size_t> BrokenLines() const;

  /** The file with these lines, as many as it has, in its own encoding; nothing when that cannot hold one of them. */
  std::optional<std::string> WithLines(const std::list<std::string>& lines) const;
  /** The text in another encoding, without byte-order mark and NUL; `lineEnd` instead of each line's own, where given.
      Nothing when the encoding cannot hold it. */
  std::optional<std::string> InEncoding(long encoding, std::optional<std::string_view> lineEnd) const;

private:
  void Split(std::string_view text);

  const std::string fBytes;
  long fEncoding;
  bool fHasByteOrderMark;
  std::string_view fRest;
  std::vector<TLine> fLayout;
  std::list<std::string> fLines;
};

/** A line in an encoding; nothing when a character has no place there. */
std::optional<std::string> encoded_line(const std::string& line, long encoding);

/** The characters that the encoding cannot hold, each once; a byte that is no UTF-8 as `\xE3`. */
std::vector<std::string> characters_outside(const std::string& line, long encoding);
