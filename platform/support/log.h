#pragma once

#include <string_view>

/** Writes one line, "sonivo: where: what", to standard error. Any thread; lines never mix. */
void log_error(std::string_view where, std::string_view what);
