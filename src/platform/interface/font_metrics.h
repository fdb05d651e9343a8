#pragma once

#include "platform/interface/font.h"

#include <string>
#include <string_view>
#include <vector>

namespace display {

/** What a font measures on the screen. Wait for the display thread, but for the default font's height and those that
    were asked before. */
font_height height_of(const BFont& font);
/** As the display starts, on its thread. */
void learn_plain_font_height();
float width_of(const BFont& font, std::string_view text);

/** Those that are installed and meant to be seen. Waits for the display thread. */
std::vector<std::string> families();

} // namespace display
