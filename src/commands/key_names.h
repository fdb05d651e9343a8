#pragma once

#include <optional>
#include <string>
#include <string_view>

/** Keys are written as in "Ctrl+Shift+M", "F8" or ",": modifiers in the order Meta, Ctrl, Alt, Shift, then a character
    (letters in upper case) or the name of a key. Pure: any thread. */

/** That notation of a key; nothing for text that names no key. Untrusted input. */
std::optional<std::string> normalized_keys(std::string_view text);

/** Keys that no command can get: those that move the selection or the focus, or open a menu or a recent file. */
bool are_reserved_keys(std::string_view keys);
