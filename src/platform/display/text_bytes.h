#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace display {

/** Lossless conversion between a text in bytes and the text widget's: bytes that are not UTF-8, and characters that the
    widget would treat as line ends, are mapped to lone surrogates. Only a line feed separates lines. */
QString text_from_bytes(std::string_view bytes);
std::string bytes_from_text(QStringView text);

} // namespace display
