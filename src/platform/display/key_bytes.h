#pragma once

#include <string>

class QKeyEvent;

namespace display {

/** The bytes that a key press types or is mapped to; empty for keys that views do not get (modifier keys, Tab, and keys
    with Ctrl or Alt, which menus and widgets handle). */
std::string key_bytes(const QKeyEvent& key);
/** The byte of the space bar or a cursor key pressed with Ctrl or Ctrl+Shift; else empty. */
std::string command_bytes(const QKeyEvent& key);

} // namespace display
