#pragma once

#include <string>

/** Puts the file in the place of an old one in one step; on failure that stays whole, and false is returned. */
bool write_file(const std::string& path, const std::string& bytes);
