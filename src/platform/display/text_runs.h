#pragma once

#include <QFont>
#include <QPointF>
#include <QString>

#include <vector>

class QPainter;

namespace display {

/** The text cut where East Asian characters begin and end. Set as one piece, the digits and tags of a Japanese line
   would take the Japanese font's shapes, and stand unlike those of the line above. */
std::vector<QString> text_runs(const QString& text);

qreal runs_width(const QFont& font, const QString& text);
/** Draws with the painter's font and pen. */
void draw_runs(QPainter& painter, QPointF baseLineStart, const QString& text);

} // namespace display
