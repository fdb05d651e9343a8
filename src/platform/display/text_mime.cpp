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

std::optional<QString> text_of_mime(const QMimeData& content, size_t maxBytes) {
  const auto isTooLong = [maxBytes](const auto& text) { return static_cast<size_t>(text.size()) > maxBytes; };
  const QByteArray bytes = content.data(QLatin1String(kBytesFormat));
  if (isTooLong(bytes)) return {};
  if (!bytes.isEmpty()) return with_line_feeds(text_from_bytes(bytes.toStdString()));
  const QString text = content.text();
  if (isTooLong(text)) return {}; // no character has fewer bytes than UTF-16 units
  return with_line_feeds(text);
}

} // namespace display
