#pragma once

#include <QTextDocument>

#include <string>

/** A text from outside as a tool tip: what looks like markup is shown, not obeyed, or it could load any file as a
    picture. */
inline QString tool_tip(const std::string& text) {
  const QString plain = QString::fromStdString(text);
  return Qt::mightBeRichText(plain) ? "<qt>" + plain.toHtmlEscaped() + "</qt>" : plain;
}
