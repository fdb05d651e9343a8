#include "platform/display/text_bytes.h"

#include "platform/support/utf8.h"

#include <QStringDecoder>

namespace display {

namespace {

/** A byte is mapped to kByteBase + byte: lone low surrogates, which no well-formed text contains. */
constexpr char16_t kByteBase = 0xdc00;
constexpr char16_t kByteLimit = 0xdcff;

bool separates_lines(char32_t unit) {
  return unit == u'\r' || unit == QChar::ParagraphSeparator || unit == QChar::LineSeparator || unit == 0xfdd0 ||
         unit == 0xfdd1;
}

void append_escaped(QString* text, std::string_view bytes) {
  for (const char byte : bytes)
    text->append(QChar(static_cast<char16_t>(kByteBase + static_cast<unsigned char>(byte))));
}

QString decoded_by_character(std::string_view bytes) {
  QString text;
  text.reserve(static_cast<qsizetype>(bytes.size()));
  while (!bytes.empty()) {
    const Utf8Character character = first_character(bytes);
    if (!character.IsValid() || separates_lines(character.code))
      append_escaped(&text, bytes.substr(0, character.length));
    else
      text += QChar::fromUcs4(character.code);
    bytes.remove_prefix(character.length);
  }
  return text;
}

} // namespace

QString text_from_bytes(std::string_view bytes) {
  QStringDecoder decode(QStringDecoder::Utf8,
                        QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  const QString text = decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  const bool isPlain = !decode.hasError() && std::none_of(text.begin(), text.end(),
                                                          [](QChar unit) { return separates_lines(unit.unicode()); });
  return isPlain ? text : decoded_by_character(bytes);
}

std::string bytes_from_text(QStringView text) {
  std::string bytes;
  bytes.reserve(static_cast<size_t>(text.size()));
  qsizetype plain = 0; // start of the part not written yet
  const auto write_plain = [&](qsizetype end) {
    const QByteArray part = text.sliced(plain, end - plain).toUtf8();
    bytes.append(part.constData(), static_cast<size_t>(part.size()));
  };
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i].unicode();
    if (QChar::isHighSurrogate(unit)) {
      if (i + 1 < text.size() && text[i + 1].isLowSurrogate()) ++i;
      continue;
    }
    const bool isByte = unit >= kByteBase && unit <= kByteLimit;
    if (!isByte && unit != QChar::ParagraphSeparator) continue;
    write_plain(i);
    bytes += isByte ? static_cast<char>(unit - kByteBase) : '\n';
    plain = i + 1;
  }
  write_plain(text.size());
  return bytes;
}

} // namespace display
