#pragma once

#include <QTextDocument>

#include <string>

/** Escapes untrusted text for a tooltip: interpreted as markup, it could load any file as a picture. */
inline QString tool_tip(const std::string& text) {
  const QString plain = QString::fromStdString(text);
  return Qt::mightBeRichText(plain) ? "<qt>" + plain.toHtmlEscaped() + "</qt>" : plain;
}
