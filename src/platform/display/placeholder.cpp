#include "platform/display/placeholder.h"

#include <QPainter>

namespace display {

namespace {
constexpr qreal kStrength = 0.6;
constexpr int kMargin = 12;
} // namespace

void paint_placeholder(QPainter* painter, const QRect& room, const QString& text, const QColor& color) {
  painter->save();
  painter->setOpacity(kStrength);
  painter->setPen(color);
  painter->drawText(room.adjusted(kMargin, 0, -kMargin, 0), Qt::AlignCenter | Qt::TextWordWrap, text);
  painter->restore();
}

} // namespace display
