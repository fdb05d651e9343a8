#pragma once

#include <QString>

class QMimeData;

namespace display {

/** Text on the clipboard or dropped, in the text widget's form (see text_bytes.h). */

/** With the text's bytes besides, for pasting in this program without a loss. The caller takes ownership. */
QMimeData* mime_of_text(const QString& text);
/** Only line feeds separate its lines; without NUL. */
QString text_of_mime(const QMimeData& content);
/** The same for a text from elsewhere. */
QString with_line_feeds(QString text);

} // namespace display
