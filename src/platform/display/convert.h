#pragma once

#include "platform/interface/font.h"
#include "platform/support/geometry.h"

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>

#include <string_view>

namespace display {

/** Conversions between the platform's values and Qt's. */
inline QString to_qstring(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline QColor to_qcolor(rgb_color color) {
  return QColor(color.red, color.green, color.blue, color.alpha);
}
/** The right and bottom edges of a BRect are inclusive. */
inline QRect to_qrect(BRect rect) {
  return QRect(qRound(rect.left), qRound(rect.top), qRound(rect.Width()) + 1, qRound(rect.Height()) + 1);
}
inline BRect to_brect(const QRect& rect) {
  return BRect{static_cast<float>(rect.left()), static_cast<float>(rect.top()), static_cast<float>(rect.right()),
               static_cast<float>(rect.bottom())};
}
inline BPoint to_bpoint(const QPoint& point) {
  return BPoint{static_cast<float>(point.x()), static_cast<float>(point.y())};
}
/** As BRect::Width and Height of a rectangle of that size. */
inline BPoint size_of(const QSize& size) {
  return BPoint{static_cast<float>(size.width() - 1), static_cast<float>(size.height() - 1)};
}
QFont to_qfont(const BFont& font);

} // namespace display
