#pragma once

#include <string>

/** The path of the first loaded image whose path contains the text; empty without one. */
std::string image_path_with(const char* text);
