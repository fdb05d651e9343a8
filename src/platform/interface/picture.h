#pragma once

#include "platform/interface/font.h"
#include "platform/support/geometry.h"

#include <string>
#include <vector>

/** One recorded drawing operation, colour and font included. */
struct picture_op {
  enum class kind : uint8 { fill_rect, stroke_rect, string };

  kind what;
  rgb_color color;
  /** Of a string: left and top are the start of its base line. */
  BRect rect;
  std::string text;
  BFont font;
};

/** What a view or a list row looks like: recorded on the window's thread, painted on the display thread.
    Coordinates count from the left top of the view or the row. */
struct BPicture {
  std::vector<picture_op> ops;

  /** All strings of the picture, one after the other with blanks between, for those who listen to the screen. */
  std::string Text() const;
};
