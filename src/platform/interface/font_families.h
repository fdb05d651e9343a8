#pragma once

#include <string>
#include <vector>

/** The names of the families that texts can be shown in, in the order of the user's language. Waits for the display. */
std::vector<std::string> font_families();
