#pragma once

#include "platform/interface/font.h"

#include <string_view>

namespace display {

/** Measures a font on the screen. Blocks on the display thread, except for the default font and heights already in the
    cache. */
font_height height_of(const BFont& font);
/** Called once as the display starts, on its thread. */
void learn_plain_font_height();
/** Blocks on the display thread. */
float width_of(const BFont& font, std::string_view text);

} // namespace display
