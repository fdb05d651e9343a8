#include "toolkit/readable_colors.h"

#include <algorithm>
#include <cmath>

namespace {

/** What WCAG 2 demands of text. */
constexpr double kLeastContrast = 4.5;
constexpr rgb_color kOnDark{255, 150, 90, 255};
constexpr rgb_color kOnLight{176, 48, 0, 255};

double linear(uint8 channel) {
  const double value = channel / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(rgb_color color) {
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

} // namespace

rgb_color mixed_color(rgb_color a, rgb_color b, double partOfA) {
  const auto channel = [partOfA](uint8 x, uint8 y) {
    return static_cast<uint8>(std::lround(partOfA * x + (1 - partOfA) * y));
  };
  return {channel(a.red, b.red), channel(a.green, b.green), channel(a.blue, b.blue), 255};
}

double contrast(rgb_color a, rgb_color b) {
  const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

rgb_color quiet_color(rgb_color text, rgb_color background) {
  for (const double partOfText : {0.6, 0.7, 0.8, 0.9}) {
    const rgb_color color = mixed_color(text, background, partOfText);
    if (contrast(color, background) >= kLeastContrast) return color;
  }
  return text;
}

rgb_color set_off(rgb_color color, rgb_color background, rgb_color extreme, double leastContrast) {
  for (const double partOfExtreme : {0.0, 0.2, 0.4, 0.6, 0.8}) {
    const rgb_color moved = mixed_color(extreme, color, partOfExtreme);
    if (contrast(moved, background) >= leastContrast) return moved;
  }
  return extreme;
}

rgb_color warning_color(rgb_color background) {
  return contrast(kOnDark, background) >= contrast(kOnLight, background) ? kOnDark : kOnLight;
}
