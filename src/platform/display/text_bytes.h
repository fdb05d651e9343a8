#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace display {

/** Between a program's text and the text control's, without loss: bytes that are no UTF-8, and characters that the
    control would take for line ends, travel as lone surrogates. Only a line feed parts lines. */
QString text_from_bytes(std::string_view bytes);
std::string bytes_from_text(QStringView text);

} // namespace display
