#include "platform/display/convert.h"

namespace display {

QFont to_qfont(const BFont& font) {
  QFont result;
  if (!font.Family().empty()) result.setFamilies({to_qstring(font.Family()), result.family()});
  if (font.Size() > 0) result.setPointSizeF(static_cast<qreal>(font.Size()));
  result.setBold((font.Face() & B_BOLD_FACE) != 0);
  result.setItalic((font.Face() & B_ITALIC_FACE) != 0);
  if (font.Flags() & B_FORCE_ANTIALIASING) result.setStyleStrategy(QFont::PreferAntialias);
  if (font.Flags() & B_DISABLE_ANTIALIASING) result.setStyleStrategy(QFont::NoAntialias);
  return result;
}

} // namespace display
