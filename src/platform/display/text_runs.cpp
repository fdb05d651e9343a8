#include "platform/display/text_runs.h"

#include <QFontMetricsF>
#include <QPainter>

namespace display {

namespace {

/** Radicals, kana, ideographs, full-width forms, and the surrogates of the rarer ideographs. */
bool is_east_asian(QChar character) {
  const char16_t code = character.unicode();
  return (code >= 0x2e80 && code <= 0xd7ff) || (code >= 0xd840 && code <= 0xd88f) ||
         (code >= 0xf900 && code <= 0xfaff) || (code >= 0xfe30 && code <= 0xfe4f) || (code >= 0xff00 && code <= 0xffef);
}

/** Low surrogates and combining marks belong to the character before them. */
bool continues_character(QChar character) {
  return character.isLowSurrogate() || character.isMark();
}

} // namespace

std::vector<QString> text_runs(const QString& text) {
  std::vector<QString> runs;
  bool wasEastAsian = false;
  for (const QChar character : text) {
    const bool isEastAsian = continues_character(character) ? wasEastAsian : is_east_asian(character);
    if (runs.empty() || isEastAsian != wasEastAsian) runs.emplace_back();
    runs.back() += character;
    wasEastAsian = isEastAsian;
  }
  return runs;
}

qreal runs_width(const QFont& font, const QString& text) {
  const QFontMetricsF metrics(font);
  qreal width = 0;
  for (const QString& run : text_runs(text)) width += metrics.horizontalAdvance(run);
  return width;
}

QString elided_runs(const QFont& font, const QString& text, qreal width) {
  if (runs_width(font, text) <= width) return text;
  const QFontMetricsF metrics(font);
  const QString ellipsis(QChar(0x2026));
  qreal leftOver = width - metrics.horizontalAdvance(ellipsis);
  QString elided;
  for (const QString& run : text_runs(text)) {
    const qreal runWidth = metrics.horizontalAdvance(run);
    if (runWidth > leftOver) return elided + metrics.elidedText(run, Qt::ElideRight, width - runs_width(font, elided));
    elided += run;
    leftOver -= runWidth;
  }
  return elided + ellipsis;
}

void draw_runs(QPainter& painter, QPointF baseLineStart, const QString& text) {
  const QFontMetricsF metrics(painter.font(), painter.device());
  for (const QString& run : text_runs(text)) {
    painter.drawText(baseLineStart, run);
    baseLineStart.rx() += metrics.horizontalAdvance(run);
  }
}

} // namespace display
