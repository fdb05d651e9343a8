#pragma once

#include "lyrics/timed_line.h"
#include "platform/interface/list_view.h"

#include <optional>
#include <string>

/** How a row shows the words of its line. */
struct TWordRow {
  std::optional<size_t> sung; // the unit that is being sung
  /** Of the current row only. */
  std::optional<size_t> next; // the unit that the next tap stamps
  size_t caret = 0;           // in bytes of the text
  std::string spoken;         // for screen readers

  friend bool operator==(const TWordRow&, const TWordRow&) = default;
};

/** Colours of a row and where its text begins and ends. */
struct TWordRowLook {
  rgb_color text;
  rgb_color background;
  rgb_color mark; // behind the sung unit
  BPoint start;   // of the baseline
  float right = 0;
  font_height font;
};

/** The units with their times, from some before the next one on. */
std::string word_times_text(const TTimedLine& line, size_t next);

/** Draws the line's own tags and its text, without the tags within: units with a time in the colour of the text, the
    others and the tags in a quieter one, the next one underlined. */
void draw_word_row(BListView* view, const TTimedLine& line, const TWordRow& row, const TWordRowLook& look);
