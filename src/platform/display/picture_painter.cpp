#include "platform/display/picture_painter.h"

#include "platform/display/convert.h"
#include "platform/display/text_runs.h"

#include <QPainter>

namespace display {

namespace {

void paint_string(QPainter& painter, const picture_op& op) {
  painter.setFont(to_qfont(op.font));
  painter.setPen(to_qcolor(op.color));
  draw_runs(painter, QPointF(static_cast<qreal>(op.rect.left), static_cast<qreal>(op.rect.top)), to_qstring(op.text));
}

void paint_outline(QPainter& painter, const picture_op& op) {
  painter.setPen(to_qcolor(op.color));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(to_qrect(op.rect).adjusted(0, 0, -1, -1));
}

} // namespace

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
