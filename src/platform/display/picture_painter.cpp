#include "platform/display/picture_painter.h"

#include "platform/display/convert.h"
#include "platform/display/text_runs.h"
#include "platform/interface/picture_parts.h"

#include <QPainter>

#include <algorithm>

namespace display {

namespace {

void paint_string(QPainter& painter, const picture_op& op) {
  painter.setFont(to_qfont(op.font));
  QPointF start(static_cast<qreal>(op.rect.left), static_cast<qreal>(op.rect.top));
  qreal widthLeft = static_cast<qreal>(op.maxWidth);
  const auto draw = [&](const std::string& part, rgb_color color) {
    QString text = to_qstring(part);
    if (op.maxWidth > 0) text = elided_runs(painter.font(), text, widthLeft);
    painter.setPen(to_qcolor(color));
    draw_runs(painter, start, text);
    const qreal width = runs_width(painter.font(), text);
    start.rx() += width;
    widthLeft -= width;
  };
  if (op.leadBytes > 0) draw(op.text.substr(0, op.leadBytes), op.leadColor);
  draw(op.text.substr(std::min(op.leadBytes, op.text.size())), op.color);
}

void paint_outline(QPainter& painter, const picture_op& op) {
  painter.setPen(to_qcolor(op.color));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(to_qrect(op.rect).adjusted(0, 0, -1, -1));
}

} // namespace

std::string elided_text(const BPicture& picture) {
  std::string text;
  const picture_op* last = nullptr;
  for (const picture_op& op : picture.ops) {
    if (op.what != picture_op::kind::string) continue;
    text = continues_text(op, last) ? text + op.text : op.text;
    if (op.maxWidth > 0 && runs_width(to_qfont(op.font), to_qstring(op.text)) > static_cast<qreal>(op.maxWidth))
      return text;
    last = &op;
  }
  return {};
}

std::string meaning_of_signs(const BPicture& picture) {
  std::string meaning;
  for (const picture_op& op : picture.ops) meaning += op.spoken;
  return meaning;
}

void paint_picture(QPainter& painter, const BPicture& picture) {
  for (const picture_op& op : picture.ops) {
    switch (op.what) {
    case picture_op::kind::fill_rect:
      painter.fillRect(to_qrect(op.rect), to_qcolor(op.color));
      break;
    case picture_op::kind::stroke_rect:
      paint_outline(painter, op);
      break;
    case picture_op::kind::string:
      paint_string(painter, op);
      break;
    }
  }
}

} // namespace display
