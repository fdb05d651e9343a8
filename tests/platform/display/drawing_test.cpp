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

TEST(Drawing, InvalidTextIsRejected) {
  EXPECT_TRUE(read_drawing("drawing 2400 2400\nink M 0 0 C 1 2 3 4 5 6 Z\n", Qt::black));
  for (const char* text :
       {"", "drawing 2400", "drawing 0 2400", "drawing 2400 99999999999", "drawing 2400.5 2400", "<svg/>",
        "drawing 2400 2400\n\n", "drawing 2400 2400\nnone M 1 1", "drawing 2400 2400\nink M 5",
        "drawing 2400 2400\nink Q 5 5", "drawing 2400 2400\nink ML 5 5", "drawing 2400 2400\nink/ink/ink M 5 5"})
    EXPECT_FALSE(read_drawing(text, Qt::black)) << text;
}
