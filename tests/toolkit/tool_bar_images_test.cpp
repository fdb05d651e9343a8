#include "window/tool_bar_images.h"

#include "platform/display/display_thread.h"
#include "platform/display/image_icon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* kNames[] = {
    "TBOpenCurLyrics",   "TBOpen",         "TBSave",       "TBFineTimeTag", "TBTagInputExtMode",
    "TBTagInputStdMode", "TBFreeEditMode", "TBWordByWord", "TBHelp",        "TBAbout"};

double linear(int channel) {
  const double share = channel / 255.0;
  return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(QColor color) {
  return 0.2126 * linear(color.red()) + 0.7152 * linear(color.green()) + 0.0722 * linear(color.blue());
}

double contrast(QColor a, QColor b) {
  const auto [low, high] = std::minmax({luminance(a), luminance(b)});
  return (high + 0.05) / (low + 0.05);
}

/** Counts of opaque pixels with sufficient contrast (3 : 1) and without. */
struct Seen {
  int clear = 0;
  int faint = 0;
};
Seen seen_on(const BBitmap& image, QColor ground, QColor ink, int size) {
  return display::call([&] {
    const QImage drawn = display::render_image(*image.Bytes(), {size, size}, ink);
    Seen seen;
    for (int y = 0; y < drawn.height(); ++y)
      for (int x = 0; x < drawn.width(); ++x)
        if (drawn.pixelColor(x, y).alpha() == 255)
          ++(contrast(drawn.pixelColor(x, y), ground) >= 3 ? seen.clear : seen.faint);
    return seen;
  });
}

} // namespace

TEST(ToolBarImages, HaveContrastOnLightAndDarkBackgrounds) {
  for (const char* name : kNames)
    for (const auto& [ground, ink] : {std::pair(QColor(0xef, 0xef, 0xef), QColor(Qt::black)),
                                      std::pair(QColor(0x2b, 0x2b, 0x2b), QColor(Qt::white))})
      for (const int size : {24, 48}) {
        const Seen seen = seen_on(GetBitmap(name), ground, ink, size);
        EXPECT_GT(seen.clear, size) << name << " at " << size;
        EXPECT_EQ(seen.faint, 0) << name << " at " << size;
      }
}
