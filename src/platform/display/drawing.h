#pragma once

#include <QBrush>
#include <QPainterPath>
#include <QSize>

#include <optional>
#include <string_view>
#include <vector>

class QPainter;

namespace display {

/** A small picture of outlines. It is made from an SVG when the program is built (scripts/translate_drawing.py), so
   that no library for these is loaded to draw a few signs, and nothing is reckoned but what to fill. A line with its
   size, then one for each shape:

      drawing 2400 2400
      #ffffffff/#ffe3e9f2 M 400 2000 L 500 1500 C 800 700 1200 600 1200 1000 Z

    The paint, then the outline: moves, lines, curves, closed; all numbers are hundredths. The paint is "ink" (the
   colour of the texts around it), a colour with its alpha first, or two, from the top of the shape to its bottom. */
struct Drawing {
  struct Shape {
    QPainterPath outline;
    QBrush paint;
  };

  void Paint(QPainter& painter) const;

  QSize size;
  std::vector<Shape> shapes;
};

/** Nothing when the text is no drawing, or one that is broken. */
std::optional<Drawing> read_drawing(std::string_view text, const QColor& ink);

} // namespace display
