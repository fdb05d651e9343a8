#include "player/peaks/loudness.h"

#include "player/peaks/frame_reader.h"
#include "player/peaks/mono_converter.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kStretchesPerSecond = 50;
constexpr size_t kMostStretches = size_t{24} * 3600 * kStretchesPerSecond; // a day
constexpr size_t kParts = 1000;

/** Measures the RMS loudness of consecutive stretches, independent of frame boundaries. */
class TMeter {
public:
  /** False when the limit is reached. */
  bool Add(const AVFrame* frame) {
    const auto samples = fConverter.Convert(frame);
    fStretch = std::max(fConverter.Rate() / kStretchesPerSecond, 1);
    for (const float sample : samples) Take(sample);
    return fStretches.size() < kMostStretches;
  }

  const std::vector<float>& Stretches() const { return fStretches; }

private:
  void Take(float sample) {
    if (std::isfinite(sample)) fEnergy += static_cast<double>(sample) * sample;
    if (++fTaken < fStretch) return;
    fStretches.push_back(static_cast<float>(std::sqrt(fEnergy / fTaken)));
    fEnergy = 0;
    fTaken = 0;
  }

  TMonoConverter fConverter{0};
  std::vector<float> fStretches;
  int fStretch = 1;
  int fTaken = 0;
  double fEnergy = 0;
};

} // namespace

std::vector<unsigned char> read_loudness(AVFormatContext* input) {
  TFrameReader reader(input);
  TMeter meter;
  for (const AVFrame* frame = reader.Next(); frame != nullptr && meter.Add(frame);) frame = reader.Next();
  std::vector<float> stretches = meter.Stretches();
  // A truncated file is padded with silence, or the waveform would be stretched over the nominal duration.
  const auto nominal =
      static_cast<size_t>(std::max<int64_t>(input->duration, 0) / (AV_TIME_BASE / kStretchesPerSecond));
  if (!stretches.empty()) stretches.resize(std::max(stretches.size(), std::min(nominal, kMostStretches)));
  return scaled_loudness(stretches, kParts);
}

std::vector<unsigned char> scaled_loudness(const std::vector<float>& stretches, size_t mostParts) {
  if (stretches.empty()) return {};
  const float loudest = std::max(*std::max_element(stretches.begin(), stretches.end()), 1e-6F);
  const size_t count = std::min(mostParts, stretches.size());
  std::vector<unsigned char> parts;
  for (size_t i = 0; i < count; ++i) {
    const auto first = stretches.begin() + static_cast<long>(i * stretches.size() / count);
    const auto last = stretches.begin() + static_cast<long>((i + 1) * stretches.size() / count);
    parts.push_back(static_cast<unsigned char>(std::lround(*std::max_element(first, last) / loudest * 255)));
  }
  return parts;
}
