#pragma once

#include <QString>

#include <string>

namespace display {

/** A label for Qt, shown literally: '&', Qt's mnemonic mark, is escaped. */
QString plain_label(const std::string& label);

/** The same, but a letter set off in front of the label, as in "F) File" or "F - File", becomes its mnemonic. */
QString accelerated_label(const std::string& label);

/** The same for the title of a menu, where any initial letter becomes the mnemonic. */
QString title_in_bar(const std::string& label);

} // namespace display
