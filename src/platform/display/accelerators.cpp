#include "platform/display/accelerators.h"

#include "platform/display/convert.h"

namespace display {

namespace {

bool is_sign(QChar character) {
  return !character.isLetterOrNumber() && !character.isSpace();
}

bool is_plain_letter(QChar character) {
  return character.unicode() <= 0x7f && character.isLetter();
}

/** "F) File" and "F - File" have one, "3. File" does not. */
bool has_accelerator(const QString& label) {
  if (label.size() < 2 || label[0].unicode() > 0x7f || !label[0].isLetterOrNumber()) return false;
  if (label[1].isSpace()) return label.size() > 2 && is_sign(label[2]);
  return is_sign(label[1]) && label[1] != QLatin1Char('.');
}

QString marked(QString label, bool mark) {
  return mark ? label.prepend(QLatin1Char('&')) : label;
}

} // namespace

QString plain_label(const std::string& label) {
  return to_qstring(label).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString accelerated_label(const std::string& label) {
  const QString text = plain_label(label);
  return marked(text, has_accelerator(text));
}

QString title_in_bar(const std::string& label) {
  const QString text = plain_label(label);
  return marked(text, !text.isEmpty() && is_plain_letter(text[0]));
}

} // namespace display
