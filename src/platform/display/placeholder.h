#pragma once

#include <QColor>
#include <QRect>
#include <QString>

class QPainter;

namespace display {

/** Draws what an empty list or text says to its user, faintly in the given colour, in the middle of `room`. */
void paint_placeholder(QPainter* painter, const QRect& room, const QString& text, const QColor& color);

} // namespace display
