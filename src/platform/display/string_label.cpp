#include "platform/display/string_label.h"

#include <QFontMetrics>
#include <QPainter>

namespace display {

namespace {

/** Smaller text is not readable. */
constexpr int kSmallestPixels = 8;

} // namespace

StringLabel::StringLabel() {
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

QFont StringLabel::FittingFont() const {
  QFont fitting = font();
  for (int pixels = fontInfo().pixelSize(); pixels >= kSmallestPixels; --pixels) {
    if (QFontMetrics(fitting).height() <= height()) break;
    fitting.setPixelSize(pixels);
  }
  return fitting;
}

void StringLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setFont(FittingFont());
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

} // namespace display
