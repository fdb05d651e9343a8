#include "platform/display/accelerators.h"

#include "platform/display/convert.h"

#include <QRegularExpression>

namespace display {

namespace {

QString marked_where(const QRegularExpression& letter, const std::string& label) {
  QString text = plain_label(label);
  if (letter.match(text).hasMatch()) text.prepend(QLatin1Char('&'));
  return text;
}

} // namespace

QString plain_label(const std::string& label) {
  return to_qstring(label).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString accelerated_label(const std::string& label) {
  static const QRegularExpression letter(QStringLiteral("^[A-Za-z0-9](?=[^\\p{L}\\p{N}\\s.]|\\s[^\\p{L}\\p{N}\\s])"));
  return marked_where(letter, label);
}

QString title_in_bar(const std::string& label) {
  static const QRegularExpression first(QStringLiteral("^[A-Za-z]"));
  return marked_where(first, label);
}

} // namespace display
