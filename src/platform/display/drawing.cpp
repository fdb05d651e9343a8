#include "platform/display/drawing.h"

#include <QColor>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <charconv>

namespace display {

namespace {

constexpr qreal kLargest = 4096;

/** Splits a text at spaces or line ends. A missing word or an invalid number sets a sticky error flag. */
class Words {
public:
  explicit Words(std::string_view text, char end = ' ') : fRest(text), fEnd(end) {}

  bool AtEnd() const { return fRest.empty(); }
  bool HasError() const { return fHasError; }
  std::string_view Next() {
    const std::string_view word = fRest.substr(0, fRest.find(fEnd));
    fRest.remove_prefix(std::min(word.size() + 1, fRest.size()));
    fHasError |= word.empty();
    return word;
  }
  /** In hundredths. */
  qreal Number() {
    const std::string_view word = Next();
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    fHasError |= error != std::errc() || end != word.data() + word.size();
    return number / 100.0;
  }
  QPointF Point() {
    const qreal x = Number();
    return {x, Number()};
  }

private:
  std::string_view fRest;
  char fEnd;
  bool fHasError = false;
};

std::optional<QColor> color_of(std::string_view name, const QColor& ink) {
  const QColor color =
      name == "ink" ? ink : QColor(QLatin1StringView(name.data(), static_cast<qsizetype>(name.size())));
  return color.isValid() ? std::optional(color) : std::nullopt;
}

std::optional<QBrush> brush_of(std::string_view names, const QRectF& extent, const QColor& ink) {
  Words words(names, '/');
  const auto top = color_of(words.Next(), ink);
  const auto bottom = words.AtEnd() ? top : color_of(words.Next(), ink);
  if (!top || !bottom || !words.AtEnd()) return std::nullopt;
  if (*top == *bottom) return QBrush(*top);
  QLinearGradient gradient(extent.topLeft(), extent.bottomLeft());
  gradient.setColorAt(0, *top);
  gradient.setColorAt(1, *bottom);
  return QBrush(gradient);
}

void add_curve(QPainterPath& outline, Words& words) {
  const QPointF first = words.Point();
  const QPointF second = words.Point();
  outline.cubicTo(first, second, words.Point());
}

bool add_part(QPainterPath& outline, Words& words) {
  const std::string_view name = words.Next();
  switch (name.size() == 1 ? name[0] : '?') {
  case 'M':
    outline.moveTo(words.Point());
    break;
  case 'L':
    outline.lineTo(words.Point());
    break;
  case 'C':
    add_curve(outline, words);
    break;
  case 'Z':
    outline.closeSubpath();
    break;
  default:
    return false;
  }
  return !words.HasError();
}

std::optional<Drawing::Shape> read_shape(Words words, const QColor& ink) {
  const std::string_view paint = words.Next();
  QPainterPath outline;
  outline.setFillRule(Qt::WindingFill);
  while (!words.AtEnd())
    if (!add_part(outline, words)) return std::nullopt;
  const auto brush = brush_of(paint, outline.boundingRect(), ink);
  return brush ? std::optional(Drawing::Shape{outline, *brush}) : std::nullopt;
}

} // namespace

void Drawing::Paint(QPainter& painter) const {
  for (const Shape& shape : shapes) painter.fillPath(shape.outline, shape.paint);
}

std::optional<Drawing> read_drawing(std::string_view text, const QColor& ink) {
  Words lines(text, '\n');
  Words head(lines.Next());
  if (head.Next() != "drawing") return std::nullopt;
  Drawing drawing;
  const QPointF size = head.Point();
  if (head.HasError() || !QRectF(1, 1, kLargest - 1, kLargest - 1).contains(size)) return std::nullopt;
  drawing.size = {qRound(size.x()), qRound(size.y())};
  while (!lines.AtEnd()) {
    auto shape = read_shape(Words(lines.Next()), ink);
    if (!shape) return std::nullopt;
    drawing.shapes.push_back(std::move(*shape));
  }
  return drawing;
}

} // namespace display
