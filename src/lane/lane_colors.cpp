#include "lane/lane_colors.h"

#include <cmath>

namespace {

constexpr int kHalfLuma = 128000;

bool is_dark(rgb_color color) {
  return 299 * color.red + 587 * color.green + 114 * color.blue < kHalfLuma;
}

rgb_color mixed(rgb_color a, rgb_color b, double partOfA) {
  const auto channel = [partOfA](uint8 x, uint8 y) {
    return static_cast<uint8>(std::lround(partOfA * x + (1 - partOfA) * y));
  };
  return {channel(a.red, b.red), channel(a.green, b.green), channel(a.blue, b.blue), 255};
}

} // namespace

TLaneColors TLaneColors::On(rgb_color background, rgb_color text) {
  const bool isDark = is_dark(background);
  TLaneColors colors;
  colors.background = background;
  colors.text = text;
  colors.middle = isDark ? rgb_color{44, 84, 150, 255} : rgb_color{140, 172, 222, 255};
  colors.loudest = isDark ? rgb_color{214, 232, 255, 255} : rgb_color{16, 40, 96, 255};
  colors.tag = isDark ? rgb_color{255, 176, 96, 255} : rgb_color{192, 72, 0, 255};
  colors.chosen = isDark ? rgb_color{255, 96, 80, 255} : rgb_color{208, 0, 24, 255};
  colors.neighbour = mixed(text, background, 0.55);
  colors.onset = colors.tag;
  colors.head = isDark ? rgb_color{96, 232, 128, 255} : rgb_color{0, 136, 56, 255};
  return colors;
}
