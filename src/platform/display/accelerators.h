#pragma once

#include <QString>

#include <string>

namespace display {

/** A label as Qt wants it. Labels are shown as they are: Qt's mark for accelerators is a plain character in them. */
QString plain_label(const std::string& label);

/** The same, but a letter that stands before the label by itself, as in "F) File" or "F - File", is what the keyboard
    reaches it by. */
QString accelerated_label(const std::string& label);

/** The same for the title of a menu, where any first letter is what the keyboard reaches it by. */
QString title_in_bar(const std::string& label);

} // namespace display
