#pragma once

#include <QFont>
#include <QPointF>
#include <QString>

#include <vector>

class QPainter;

namespace display {

/** Splits the text into runs of East Asian and other characters. Drawn as one piece, the digits and tags of a Japanese
    line would use the glyphs of the Japanese font and not align with those of other lines. */
std::vector<QString> text_runs(const QString& text);

qreal runs_width(const QFont& font, const QString& text);
/** The text, or as much of it as fits into that width with an ellipsis. */
QString elided_runs(const QFont& font, const QString& text, qreal width);
/** Draws with the painter's font and pen. */
void draw_runs(QPainter& painter, QPointF baseLineStart, const QString& text);

} // namespace display
