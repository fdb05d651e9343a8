#include "platform/interface/font_metrics.h"

#include "platform/display/convert.h"
#include "platform/display/display_thread.h"
#include "platform/display/known_value.h"
#include "platform/display/text_runs.h"
#include "platform/interface/font_families.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>

#include <algorithm>
#include <mutex>
#include <optional>
#include <vector>

namespace display {

namespace {

/** Cache of font heights, unbounded since few fonts are ever used. Thread-safe. */
struct HeightCache {
  std::mutex lock;
  std::vector<std::pair<BFont, font_height>> known;

  std::optional<font_height> Find(const BFont& font) {
    const std::scoped_lock hold(lock);
    const auto found = std::find_if(known.begin(), known.end(), [&](const auto& entry) { return entry.first == font; });
    if (found == known.end()) return std::nullopt;
    return found->second;
  }

  void Add(const BFont& font, const font_height& height) {
    const std::scoped_lock hold(lock);
    known.emplace_back(font, height);
  }
};

HeightCache& cache() {
  static HeightCache* const theCache = new HeightCache;
  return *theCache;
}

KnownValue<font_height>& plain_font_height() {
  static auto* const height = new KnownValue<font_height>; // never destroyed: threads may outlive main
  return *height;
}

/** Extent of the em square of Japanese characters above and below the baseline, as a fraction of the font size. The
    same in practically every font; measuring would load a Japanese font even for users who never see Japanese. */
constexpr double kSquareAbove = 0.88;
constexpr double kSquareBelow = 0.12;

/** Lines may mix Japanese and Latin text: the height is that of the taller one. */
font_height measure(const BFont& font) {
  const QFont shown = to_qfont(font);
  const QFontMetricsF metrics(shown);
  const double size = QFontInfo(shown).pixelSize();
  font_height height;
  height.ascent = static_cast<float>(std::max(metrics.ascent(), kSquareAbove * size));
  height.descent = static_cast<float>(std::max(metrics.descent(), kSquareBelow * size));
  height.leading = static_cast<float>(std::max(metrics.leading(), 0.0));
  return height;
}

} // namespace

void learn_plain_font_height() {
  plain_font_height().Learn(measure(BFont()));
}

font_height height_of(const BFont& font) {
  if (font == BFont() && !is_display_thread()) return plain_font_height().Get();
  if (const auto known = cache().Find(font)) return *known;
  const auto height = call([font]() -> std::optional<font_height> { return measure(font); }, {}, Turn::first);
  if (!height) return {};
  cache().Add(font, *height);
  return *height;
}

float width_of(const BFont& font, std::string_view text) {
  return call(
      [font, asked = std::string(text)] { return static_cast<float>(runs_width(to_qfont(font), to_qstring(asked))); },
      0, Turn::first);
}

} // namespace display

std::vector<std::string> font_families() {
  return display::call([] {
    std::vector<std::string> names;
    for (const QString& name : QFontDatabase::families())
      if (!QFontDatabase::isPrivateFamily(name)) names.push_back(name.toStdString());
    return names;
  });
}
