#pragma once

#include <list>
#include <optional>
#include <string>

/** Timed lyrics for other programs: UTF-8 with LF, without byte-order mark and NUL. Pure: any thread. */

enum class TExportFormat {
  kDotted,   // a `[mm:ss.cc]` in front of each line, without the tags within lines
  kEnhanced, // the same, and a `<mm:ss.cc>` in front of each word that has a tag
  kSubtitles // SubRip, each line until the next; lines without a tag belong to the one before
};
inline constexpr int kExportFormats = 3;

struct TExported {
  std::string bytes;
  /** Lines with words that the format cannot represent. */
  long linesLeftOut = 0;
};

/** Nothing when the lyrics lack what the format needs: a line with a time tag and, for the enhanced form, a tag within
    a line. A line that begins with several tags is sung at each of them. */
std::optional<TExported> export_lyrics(const std::list<std::string>& lines, TExportFormat format);

/** "song.lrc" to "song.dotted.lrc", "song.enhanced.lrc", "song.srt". */
std::string export_name(const std::string& name, TExportFormat format);

/** "song.txt" and "song.lrc" to "song.lrc", for the dotted form where no such file exists. */
std::string plain_export_name(const std::string& name);
