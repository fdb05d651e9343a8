#include "platform/display/drawing.h"

#include "platform/display/image_icon.h"

#include <gtest/gtest.h>

using display::read_drawing;

TEST(Drawing, UsesTheInkColourAndItsOwnColours) {
  const std::string text = "drawing 200 100\n"
                           "ink M 0 0 L 100 0 L 100 100 L 0 100 Z\n"
                           "#ff0000ff/#ff00ff00 M 100 0 L 200 0 L 200 100 L 100 100 Z\n";
  for (const QColor ink : {QColor(Qt::red), QColor(Qt::white)}) {
    const QImage image = display::render_image(text, {40, 20}, ink);
    ASSERT_EQ(image.size(), QSize(40, 20));
    EXPECT_EQ(image.pixelColor(5, 10), ink);
    EXPECT_GT(image.pixelColor(30, 1).blue(), 220);
    EXPECT_GT(image.pixelColor(30, 18).green(), 220);
  }
}
