#include "player/widgets/elided_label.h"

#include <QPainter>
#include <QStyle>

TElidedLabel::TElidedLabel(double strength) : fStrength(strength) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void TElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setOpacity(fStrength);
  const QRect room = contentsRect();
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room.width());
  style()->drawItemText(&painter, room, static_cast<int>(Qt::AlignVCenter), palette(), isEnabled(), shown,
                        foregroundRole());
}
