#pragma once

#include <QString>

#include <optional>

class QMimeData;

namespace display {

/** Text on the clipboard or dropped, in the text widget's form (see text_bytes.h). */

/** With the text's bytes besides, for pasting in this program without a loss. The caller takes ownership. */
QMimeData* mime_of_text(const QString& text);
/** Only line feeds separate its lines; without NUL. Nothing, before any conversion, if its bytes are certainly more. */
std::optional<QString> text_of_mime(const QMimeData& content, size_t maxBytes);
/** The same for a text from elsewhere. */
QString with_line_feeds(QString text);

} // namespace display
