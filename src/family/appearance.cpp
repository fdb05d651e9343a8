#include "family/appearance.h"

#include "plugin/pref.h"

BFont lyrics_font(BFont font, const TPrefValues& look) {
  font.SetFamilyAndFace(look.fontFamily, B_REGULAR_FACE);
  font.SetSize(look.fontSize);
  font.SetFlags(look.antiAlias ? B_FORCE_ANTIALIASING : B_DISABLE_ANTIALIASING);
  return font;
}
