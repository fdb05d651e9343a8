#include "window/tool_bar_images.h"

#include "platform/display/display_thread.h"
#include "platform/display/image_icon.h"
#include "tests/support/testing.h"
#include "toolkit/readable_colors.h"

namespace {

constexpr const char* kNames[] = {
    "TBOpenCurLyrics",   "TBOpen",         "TBSave",       "TBFineTimeTag", "TBTagInputExtMode",
    "TBTagInputStdMode", "TBFreeEditMode", "TBWordByWord", "TBHelp",        "TBAbout"};

rgb_color rgb(QColor color) {
  return {static_cast<uint8>(color.red()), static_cast<uint8>(color.green()), static_cast<uint8>(color.blue()), 255};
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
          ++(contrast(rgb(drawn.pixelColor(x, y)), rgb(ground)) >= 3 ? seen.clear : seen.faint);
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
