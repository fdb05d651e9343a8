#pragma once

#include <string>

/** Path of the first loaded image whose path contains the text; empty if there is none. */
std::string image_path_with(const char* text);
