#pragma once

#include "platform/interface/font.h"
#include "platform/support/geometry.h"

#include <string>
#include <vector>

/** One recorded drawing operation with its colour and font. */
struct picture_op {
  enum class kind : uint8 { fill_rect, stroke_rect, string };

  kind what;
  rgb_color color;
  /** For a string, left and top are the start of its baseline. */
  BRect rect;
  std::string text;
  BFont font;
  /** Of a string: a wider one ends with an ellipsis. 0 for no limit. */
  float maxWidth = 0;
  /** Of a string: its first bytes, which have a colour of their own. */
  size_t leadBytes = 0;
  rgb_color leadColor{};
  /** Of a sign: its meaning in words, a description for screen readers. */
  std::string spoken{};
};

/** The recorded drawing of a view or list row: recorded on the window's thread, painted on the display thread.
    Coordinates are relative to the left top of the view or row. */
struct BPicture {
  std::vector<picture_op> ops;

  /** All strings of the picture joined by spaces, for screen readers. */
  std::string Text() const;
};
