#pragma once

#include "platform/support/types.h"

#include <list>
#include <string>
#include <string_view>
#include <vector>

/** The forms that lyrics take inside songs. Pure: any thread. */

/** A line and the moment at which it is sung. */
struct TSyncedLine {
  int32 timeMs = 0;
  std::string text;
};

/** Valid UTF-8 with LF, up to the first NUL, without line feeds at the end. */
std::string normalized_text(std::string_view text);

/** Lines of a document or lyrics file as they are written into songs: tags as [mm:ss.cc]. */
std::string text_for_song(const std::list<std::string>& lines);
/** Without time tags and headers such as [ti:Title]. */
std::string plain_text(const std::string& text);
/** The lines with time tags, sorted by time; one with several tags occurs several times. An [offset:] is applied. */
std::vector<TSyncedLine> synced_lines(const std::string& text);
/** Back to lines with tags [mm:ss.cc], rounded to hundredths. */
std::string synced_text(const std::vector<TSyncedLine>& lines);
/** Lyrics from a song as lines of a document, with tags [mm:ss:cc]; thousandths are cut. */
std::list<std::string> document_lines(const std::string& text);
