#pragma once

#include <optional>
#include <string>

/** All bytes of the file; nothing when it cannot be read. */
std::optional<std::string> read_file(const std::string& path);
