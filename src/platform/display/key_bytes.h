#pragma once

#include <string>

class QKeyEvent;

namespace display {

/** The bytes that a key press types or stands for; empty when it is none for the program (modifier keys, the focus keys
    Tab, and everything with Ctrl or Alt, which belongs to menus and controls). */
std::string key_bytes(const QKeyEvent& key);
/** The byte of the space bar or of a key that moves, pressed with Ctrl alone or with Shift; else empty. */
std::string command_bytes(const QKeyEvent& key);

} // namespace display
