#include "platform/interface/font.h"

#include "platform/interface/font_metrics.h"

namespace {

BFont bold_font() {
  BFont font;
  font.SetFace(B_BOLD_FACE);
  return font;
}

const BFont plainFont;
const BFont boldFont = bold_font();

} // namespace

const BFont* const be_plain_font = &plainFont;
const BFont* const be_bold_font = &boldFont;

void BFont::SetFamilyAndFace(std::string_view family, uint16 face) {
  fFamily = family;
  fFace = face;
}

void BFont::GetHeight(font_height* height) const {
  *height = display::height_of(*this);
}

float BFont::StringWidth(std::string_view text) const {
  return text.empty() ? 0 : display::width_of(*this, text);
}
