#include "window/tool_bar_images.h"

#include "platform/display/display_thread.h"
#include "platform/display/image_icon.h"
#include "tests/support/testing.h"
#include "toolkit/readable_colors.h"

namespace {

constexpr const char* kNames[] = {
    "TBOpenCurLyrics",   "TBOpen",         "TBSave",       "TBFineTimeTag", "TBTagInputExtMode",
    "TBTagInputStdMode", "TBFreeEditMode", "TBWordByWord", "TBHelp",        "TBAbout"};

/** How many opaque pixels have sufficient contrast (3 : 1), and how many have not. */
std::array<int, 2> seen_on(const BBitmap& image, rgb_color ground, QColor ink, int size) {
  return display::call([&] {
    const QImage drawn = display::render_image(*image.Bytes(), {size, size}, ink);
    std::array<int, 2> seen{};
    for (int at = 0; at < drawn.width() * drawn.height(); ++at) {
      const QColor pixel = drawn.pixelColor(at % drawn.width(), at / drawn.width());
      const auto part = [](int value) { return static_cast<uint8>(value); };
      const rgb_color color{part(pixel.red()), part(pixel.green()), part(pixel.blue()), 255};
      if (pixel.alpha() == 255) ++seen[contrast(color, ground) >= 3 ? 0 : 1];
    }
    return seen;
  });
}

} // namespace

TEST(ToolBarImages, HaveContrastOnLightAndDarkBackgrounds) {
  for (const char* name : kNames)
    for (const auto& [ground, ink] : {std::pair(rgb_color{0xef, 0xef, 0xef, 255}, Qt::black),
                                      std::pair(rgb_color{0x2b, 0x2b, 0x2b, 255}, Qt::white)})
      for (const int size : {24, 48}) {
        const auto [clear, faint] = seen_on(GetBitmap(name), ground, ink, size);
        EXPECT_GT(clear, size) << name << " at " << size;
        EXPECT_EQ(faint, 0) << name << " at " << size;
      }
}
