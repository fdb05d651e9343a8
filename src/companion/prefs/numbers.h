#pragma once

#include <optional>
#include <string>

/** Parses the whole text as a number; nothing for any other text or a number out of bounds. */
std::optional<long> whole_number(const std::string& text, long smallest, long largest);
