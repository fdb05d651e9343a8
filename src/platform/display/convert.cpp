#include "platform/display/convert.h"

#include "platform/display/display_thread.h"

#include <QFontDatabase>
#include <QHash>

namespace display {

namespace {

/** Cached: the font database searches all its families each time, and rows ask for every piece of text. */
bool is_installed(const QString& family) {
  assert_on_display_thread();
  static QHash<QString, bool> known;
  const auto found = known.constFind(family);
  return found != known.constEnd() ? *found : *known.insert(family, QFontDatabase::hasFamily(family));
}

} // namespace

QFont to_qfont(const BFont& font) {
  QFont result;
  const QString family = to_qstring(font.Family());
  // Qt would replace a missing family by one chosen for the first characters of the text only.
  if (!family.isEmpty() && is_installed(family)) result.setFamily(family);
  if (font.Size() > 0) result.setPointSizeF(static_cast<qreal>(font.Size()));
  result.setBold((font.Face() & B_BOLD_FACE) != 0);
  result.setItalic((font.Face() & B_ITALIC_FACE) != 0);
  if (font.Flags() & B_FORCE_ANTIALIASING) result.setStyleStrategy(QFont::PreferAntialias);
  if (font.Flags() & B_DISABLE_ANTIALIASING) result.setStyleStrategy(QFont::NoAntialias);
  return result;
}

} // namespace display
