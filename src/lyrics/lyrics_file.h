#pragma once

#include "lyrics/dialect.h"
#include "lyrics/file_state.h"
#include "lyrics/lyrics_form.h"
#include "platform/storage/entry_ref.h"

#include <list>
#include <string>
#include <string_view>
#include <vector>

/** Lyrics as files: bytes in one of three encodings with one of three line ends, and back. In memory a document is a
    list of UTF-8 lines without line ends. Any thread. */

/** A document's file and form, as a record of plain numbers. */
struct TLyricsInfo {
  long CRType = 0;   // 0 LF, 1 CR LF, 2 CR
  long Encoding = 0; // 0 UTF-8, 1 Shift-JIS, 2 JIS
  entry_ref File;    // empty while the document was never saved
};

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // in UTF-8

/** The value of the setting for opening that means: detect the encoding. */
inline constexpr long kDetectEncoding = 4;

/** Larger files are refused. */
inline constexpr int64 kMaxLyricsFileSize = int64{1} << 30;

/** What of a file's bytes its lines do not hold, so that saving them over the file loses it. */
struct TReadLosses {
  int64 tailBytes = 0;         // after the first NUL, unless all are NULs
  bool isCut = false;          // the converted text was longer than its limit
  bool hasBrokenBytes = false; // invalid in the encoding, read as substitutes
  /** Written in another way than they were read: a CR that ends no line, a code that has a second spelling. */
  bool hasOddBytes = false;

  /** The lines show all of the text. */
  bool IsTextWhole() const { return tailBytes == 0 && !isCut && !hasBrokenBytes; }
  bool Any() const { return !IsTextWhole() || hasOddBytes; }
};

/** What reading a file reports besides its lines. */
struct TReadReport {
  TReadLosses losses;
  bool lacksLastLineEnd = false;
  TFileState state;
};

/** Reads a file in the encoding that the settings (`gPref`) ask for, or detects it. A byte-order mark stays in the
    first line, a NUL ends the text. `report` is optional. Returns false, with no output changed, for a file that cannot
    be opened or read, is no regular file, or is larger than kMaxLyricsFileSize. */
bool load_lyrics(const entry_ref& file, std::list<std::string>* lines, long* crType, long* encoding,
                 TReadReport* report = nullptr);

/** The same in a given encoding: 0 to 2, a foreign one, or kDetectEncoding. An unknown number leaves the bytes as they
    are. */
bool load_lyrics_as(long readEncoding, const entry_ref& file, std::list<std::string>* lines, long* crType,
                    long* encoding, TReadReport* report = nullptr);

/** True when the text up to a NUL has a last line without a line end. */
bool lacks_last_line_end(std::string_view bytes, TEncoding encoding);

/** The lines that reading a file of these bytes in that encoding gives. */
std::list<std::string> lines_of_bytes(std::string_view bytes, TEncoding encoding);

/** Clears the list and splits a NUL-terminated text at line feeds; a final line feed begins no further line. */
void text_to_lines(const char* text, std::list<std::string>* lines);

/** The bytes that a save writes: every line with its line end, converted. UTF-8 ends with one NUL, on purpose. */
std::string lines_to_bytes(const std::list<std::string>& lines, long crType, long encoding);
/** The same for a document, whose dialect may be the common one: without the NUL, with what `source` tells. */
std::string encoded_lines(const std::vector<std::string>& lines, const TLyricsForm& form,
                          const TCommonSource& source = {});

/** Maps the program's encoding numbers to the converter's (an unknown one to 0), and back (all but Shift-JIS and JIS to
    0). */
unsigned long cvt_enum_ec_to_bconv(long encoding);
long cvt_enum_bconv_to_ec(unsigned long converter);
/** Returns 1 and 2 unchanged, 0 for every other number. */
long cvt_enum_cr_type_to_ct(long crType);
