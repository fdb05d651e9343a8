#pragma once

#include "platform/storage/entry_ref.h"

#include <list>
#include <string>

/** Lyrics as files: bytes in one of three encodings with one of three line ends, and back. In memory a document is a
    list of UTF-8 lines without line ends. Any thread. */

/** What belongs to an open document beside its lines. */
struct TLyricsInfo {
  long CRType = 0;   // 0 LF, 1 CR LF, 2 CR
  long Encoding = 0; // 0 UTF-8, 1 Shift-JIS, 2 JIS
  entry_ref File;    // empty while the document was never saved
};

/** The setting for opening that means: find out. */
inline constexpr long kDetectEncoding = 4;

/** Reads a file; the encoding is the one the settings (`gPref`) ask for, or found out. A byte-order mark stays in the
    first line, a NUL ends the text. `isWhole`, where wanted: nothing but NULs stands behind the first one, and every
    character found its place in the lines. False, and no output touched, when the file cannot be opened or read, is no
    ordinary file, or is larger than 1 GiB. */
bool load_lyrics(const entry_ref& file, std::list<std::string>* lines, long* crType, long* encoding,
                 bool* isWhole = nullptr);

/** The same with the encoding named: 0 to 2, or kDetectEncoding. An unknown number leaves the bytes as they are. */
bool load_lyrics_as(long readEncoding, const entry_ref& file, std::list<std::string>* lines, long* crType,
                    long* encoding, bool* isWhole = nullptr);

/** Clears the list and splits a NUL-terminated text at line feeds; a final line feed begins no further line. */
void text_to_lines(const char* text, std::list<std::string>* lines);

/** The bytes that a save writes: every line with its line end, converted. UTF-8 ends with one NUL, on purpose. */
std::string lines_to_bytes(const std::list<std::string>& lines, long crType, long encoding);

/** The program's encoding numbers to the converter's (0 for an unknown one), and back (0 for all but JIS, Shift-JIS).
 */
unsigned long cvt_enum_ec_to_bconv(long encoding);
long cvt_enum_bconv_to_ec(unsigned long converter);
/** 1 and 2 stay, everything else is 0. */
long cvt_enum_cr_type_to_ct(long crType);
