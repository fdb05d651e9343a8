#pragma once

#include <string>
#include <vector>

/** Keys in portable notation, as the user reads them in menus: "Ctrl+S" in German is "Strg+S". Blocks on the display
    thread. */
std::vector<std::string> shown_keys(const std::vector<std::string>& keys);
