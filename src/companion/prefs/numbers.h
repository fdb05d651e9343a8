#pragma once

#include <optional>
#include <string>

/** The number that the whole text is; nothing for another text or a number out of bounds. */
std::optional<long> whole_number(const std::string& text, long smallest, long largest);
