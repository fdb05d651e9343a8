#include "lane/lane_colors.h"

#include "toolkit/readable_colors.h"

namespace {

constexpr rgb_color kWhite{255, 255, 255, 255};
constexpr rgb_color kBlack{0, 0, 0, 255};
/** What WCAG 2 demands of lines that have a meaning. */
constexpr double kLeastOfMarkers = 3;
/** Less, since the markers are drawn over it. */
constexpr double kLeastOfWave = 2;

/** From the background to the loudest, the spectrogram gets lighter all the time, or darker. */
rgb_color middle_between(rgb_color background, rgb_color usual, rgb_color loudest) {
  const double all = contrast(background, loudest);
  const bool isBetween = contrast(background, usual) < all && contrast(usual, loudest) < all;
  return isBetween ? usual : mixed_color(loudest, background, 0.4);
}

} // namespace

/** Light lines where the lyrics are lighter than their background, else dark ones. */
TLaneColors TLaneColors::On(rgb_color background, rgb_color text) {
  const bool isDark = contrast(background, kWhite) > contrast(text, kWhite);
  const rgb_color extreme = isDark ? kWhite : kBlack;
  const auto marker = [&](rgb_color onDark, rgb_color onLight) {
    return set_off(isDark ? onDark : onLight, background, extreme, kLeastOfMarkers);
  };
  TLaneColors colors;
  colors.background = background;
  colors.text = text;
  colors.loudest = isDark ? rgb_color{214, 232, 255, 255} : rgb_color{16, 40, 96, 255};
  colors.middle =
      middle_between(background, isDark ? rgb_color{44, 84, 150, 255} : rgb_color{140, 172, 222, 255}, colors.loudest);
  colors.wave = set_off(colors.middle, background, colors.loudest, kLeastOfWave);
  colors.tag = marker({255, 176, 96, 255}, {192, 72, 0, 255});
  colors.chosen = marker({255, 96, 80, 255}, {208, 0, 24, 255});
  colors.neighbour = quiet_color(text, background);
  colors.onset = colors.tag;
  colors.head = marker({96, 232, 128, 255}, {0, 136, 56, 255});
  return colors;
}
