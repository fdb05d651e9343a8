#include "lane/lane_pixels.h"

#include "songsound/song_sound.h"

#include <algorithm>
#include <array>

namespace {

constexpr int kLevels = 256;
/** What is quieter than that share of full scale is background: the noise of most recordings. */
constexpr int kQuietLevel = 64;
/** Louder than that is drawn as the loudest: single bands rarely come near full scale. */
constexpr int kLoudLevel = 224;
using TPalette = std::array<uint32, kLevels>;
using TColumn = std::array<uint8, kSoundBands>;

uint32 argb(rgb_color color) {
  return 0xff000000U | uint32{color.red} << 16 | uint32{color.green} << 8 | color.blue;
}

uint32 mixed(rgb_color from, rgb_color to, double part) {
  const auto channel = [part](uint8 a, uint8 b) { return static_cast<uint8>(a + (b - a) * part + 0.5); };
  return argb({channel(from.red, to.red), channel(from.green, to.green), channel(from.blue, to.blue), 255});
}

TPalette palette_of(const TLaneColors& colors) {
  TPalette palette{};
  for (int level = 0; level < kLevels; ++level) {
    const double part =
        std::clamp(double{static_cast<double>(level - kQuietLevel)} / (kLoudLevel - kQuietLevel), 0.0, 1.0);
    palette[static_cast<size_t>(level)] = part < 0.5 ? mixed(colors.background, colors.middle, part * 2)
                                                     : mixed(colors.middle, colors.loudest, part * 2 - 1);
  }
  return palette;
}

/** The columns of the sound that one column of pixels shows. */
struct TSlice {
  int32 fromMs;
  int32 toMs;
};

TSlice slice_at(const TLaneRange& range, int32 x, int32 width) {
  const int32 fromMs = range.TimeAt(x, width);
  return {fromMs, std::max(range.TimeAt(x + 1, width), fromMs + 1)};
}

/** The loudest of the slice, band by band. */
bool read_levels(const TSongSound& sound, const TSlice& slice, TColumn* column) {
  bool isRead = false;
  column->fill(0);
  for (int32 timeMs = slice.fromMs; timeMs < slice.toMs; timeMs += kSoundColumnMs) {
    const uint8* const levels = timeMs < 0 ? nullptr : sound.Levels(timeMs);
    if (!levels) continue;
    isRead = true;
    for (size_t band = 0; band < column->size(); ++band) (*column)[band] = std::max((*column)[band], levels[band]);
  }
  return isRead;
}

/** Between two bands. */
int level_at(const TColumn& column, double band) {
  const double at = std::clamp(band, 0.0, double{kSoundBands - 1});
  const auto low = static_cast<size_t>(at);
  const size_t high = std::min(low + 1, column.size() - 1);
  const double part = at - static_cast<double>(low);
  return static_cast<int>(column[low] * (1 - part) + column[high] * part + 0.5);
}

void draw_spectrogram(const TSongSound& sound, const TLaneRange& range, const TPalette& palette, int32 top,
                      pixel_image* image) {
  const int32 height = image->height - top;
  TColumn column;
  for (int32 x = 0; x < image->width; ++x) {
    if (!read_levels(sound, slice_at(range, x, image->width), &column)) continue;
    for (int32 y = 0; y < height; ++y) {
      const double band = (height - 0.5 - y) * kSoundBands / height - 0.5;
      image->pixels[static_cast<size_t>(top + y) * static_cast<size_t>(image->width) + static_cast<size_t>(x)] =
          palette[static_cast<size_t>(level_at(column, band))];
    }
  }
}

void draw_wave(const TSongSound& sound, const TLaneRange& range, uint32 color, int32 top, pixel_image* image) {
  const int32 height = image->height - top;
  for (int32 x = 0; x < image->width; ++x) {
    const TSlice slice = slice_at(range, x, image->width);
    int32 peak = -1;
    for (int32 timeMs = std::max(slice.fromMs, int32{0}); timeMs < slice.toMs; timeMs += kSoundColumnMs)
      peak = std::max(peak, int32{sound.Peak(timeMs).value_or(0)});
    if (peak < 0) continue;
    const int32 half = peak * height / 2 / (kLevels - 1);
    const int32 middle = top + height / 2;
    for (int32 y = std::max(middle - half, top); y < std::min(middle + half + 1, image->height); ++y)
      image->pixels[static_cast<size_t>(y) * static_cast<size_t>(image->width) + static_cast<size_t>(x)] = color;
  }
}

} // namespace

pixel_image sound_pixels(const TSongSound* sound, const TLaneRange& range, TLaneLook look, const TLaneColors& colors,
                         int32 width, int32 height, int32 labelHeight) {
  if (width <= 0 || height <= 0) return {};
  pixel_image image{width, height, {}};
  image.pixels.assign(static_cast<size_t>(width) * static_cast<size_t>(height), argb(colors.background));
  if (!sound || labelHeight >= height) return image;
  if (look == TLaneLook::kSpectrogram) draw_spectrogram(*sound, range, palette_of(colors), labelHeight, &image);
  if (look == TLaneLook::kWave) draw_wave(*sound, range, argb(colors.wave), labelHeight, &image);
  return image;
}
