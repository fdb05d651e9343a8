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
};

/** The recorded drawing of a view or list row: recorded on the window's thread, painted on the display thread.
    Coordinates are relative to the left top of the view or row. */
struct BPicture {
  std::vector<picture_op> ops;

  /** All strings of the picture joined by spaces, for screen readers. */
  std::string Text() const;
};
