#pragma once

#include <QBrush>
#include <QPainterPath>
#include <QSize>

#include <optional>
#include <string_view>
#include <vector>

class QPainter;

namespace display {

/** A small vector image, converted from SVG at build time (scripts/translate_drawing.py), so that no SVG library is
    loaded for a few icons. A line with the size, then one line per shape:

      drawing 2400 2400
      #ffffffff/#ffe3e9f2 M 400 2000 L 500 1500 C 800 700 1200 600 1200 1000 Z

    First the paint, then the outline (move, line, curve, close); all numbers are hundredths. The paint is "ink" (the
    colour of the surrounding text), an ARGB colour, or two of them for a gradient from top to bottom. */
struct Drawing {
  struct Shape {
    QPainterPath outline;
    QBrush paint;
  };

  void Paint(QPainter& painter) const;

  QSize size;
  std::vector<Shape> shapes;
};

/** Nothing when the text is not a valid drawing. */
std::optional<Drawing> read_drawing(std::string_view text, const QColor& ink);

} // namespace display
