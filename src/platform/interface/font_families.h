#pragma once

#include <string>
#include <vector>

/** Names of the installed font families, sorted by the user's locale. Blocks on the display thread. */
std::vector<std::string> font_families();
