#include "platform/display/text_mime.h"

#include "platform/display/text_bytes.h"

#include <QMimeData>

namespace display {

namespace {

/** The text as the program stores it. */
constexpr const char* kBytesFormat = "application/x-vesmo-lyrics-bytes";

} // namespace

QString with_line_feeds(QString text) {
  return text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
      .replace(QLatin1Char('\r'), QLatin1Char('\n'))
      .replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'))
      .replace(QChar(QChar::LineSeparator), QLatin1Char('\n'))
      .remove(QChar(QChar::Null));
}

QMimeData* mime_of_text(const QString& text) {
  auto* const content = new QMimeData;
  content->setText(text);
  content->setData(QLatin1String(kBytesFormat), QByteArray::fromStdString(bytes_from_text(text)));
  return content;
}

QString text_of_mime(const QMimeData& content) {
  const QByteArray bytes = content.data(QLatin1String(kBytesFormat));
  return with_line_feeds(bytes.isEmpty() ? content.text() : text_from_bytes(bytes.toStdString()));
}

} // namespace display
