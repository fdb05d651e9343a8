#include "player/peaks/sound_columns.h"

extern "C" {
#include <libavutil/mem.h>
#include <libavutil/tx.h>
}

#include <algorithm>
#include <cmath>
#include <new>
#include <numbers>

namespace {

constexpr size_t kHop = kAnalysisRate / 200;
constexpr size_t kWindow = 512;
constexpr size_t kBins = kWindow / 2 + 1;
/** Samples of a window before its column. */
constexpr size_t kBefore = (kWindow - kHop) / 2;
/** Files with floating point samples may exceed full scale by any factor. */
constexpr float kLoudest = 8;
constexpr float kLowestHz = 60;
constexpr float kHighestHz = 11000;

float mel(float hz) {
  return 1127 * std::log(1 + hz / 700);
}
float hz_of(float mel) {
  return 700 * (std::exp(mel / 1127) - 1);
}

struct TBand {
  size_t firstBin = 0;
  std::vector<float> weights;
};

/** A triangle around the centre, at least one bin wide to each side. */
TBand band_at(float centreHz, float halfWidthHz) {
  constexpr float kBinHz = static_cast<float>(kAnalysisRate) / kWindow;
  const float half = std::max(halfWidthHz, kBinHz);
  TBand band;
  for (size_t bin = 1; bin < kBins; ++bin) {
    const float weight = 1 - std::abs(static_cast<float>(bin) * kBinHz - centreHz) / half;
    if (weight <= 0) continue;
    if (band.weights.empty()) band.firstBin = bin;
    band.weights.push_back(weight);
  }
  return band;
}

std::vector<TBand> make_bands() {
  std::vector<TBand> bands;
  const float step = (mel(kHighestHz) - mel(kLowestHz)) / (kAnalysisBands - 1);
  for (size_t i = 0; i < kAnalysisBands; ++i) {
    const float centre = mel(kLowestHz) + static_cast<float>(i) * step;
    bands.push_back(band_at(hz_of(centre), hz_of(centre + step) - hz_of(centre)));
  }
  return bands;
}

struct TFreeByLibrary {
  void operator()(float* numbers) const { av_free(numbers); }
};
using TAlignedFloats = std::unique_ptr<float, TFreeByLibrary>;

TAlignedFloats aligned_floats(size_t count) {
  auto* const numbers = static_cast<float*>(av_malloc(count * sizeof(float)));
  if (numbers == nullptr) throw std::bad_alloc();
  return TAlignedFloats(numbers);
}

} // namespace

/** The power spectrum of a window, in bands. */
class TSoundColumns::TTransform {
public:
  TTransform() {
    const float scale = 1;
    if (av_tx_init(&fContext, &fRun, AV_TX_FLOAT_RDFT, 0, kWindow, &scale, 0) < 0) throw std::bad_alloc();
    for (size_t i = 0; i < kWindow; ++i) {
      const double phase = 2 * std::numbers::pi * static_cast<double>(i) / kWindow;
      fHann[i] = static_cast<float>((1 - std::cos(phase)) / 2 * 4 / kWindow); // a sine of amplitude 1 gives power 1
    }
  }
  TTransform(const TTransform&) = delete;
  TTransform& operator=(const TTransform&) = delete;
  ~TTransform() { av_tx_uninit(&fContext); }

  void BandPowers(const float* window, std::array<float, kAnalysisBands>* powers) {
    for (size_t i = 0; i < kWindow; ++i) fIn.get()[i] = window[i] * fHann[i];
    fRun(fContext, fOut.get(), fIn.get(), sizeof(float));
    for (size_t bin = 0; bin < kBins; ++bin) {
      const float real = fOut.get()[2 * bin];
      const float imaginary = fOut.get()[2 * bin + 1];
      fPower[bin] = real * real + imaginary * imaginary;
    }
    for (size_t i = 0; i < kAnalysisBands; ++i) (*powers)[i] = PowerOf(fBands[i]);
  }

private:
  float PowerOf(const TBand& band) const {
    float sum = 0;
    for (size_t i = 0; i < band.weights.size(); ++i) sum += band.weights[i] * fPower[band.firstBin + i];
    return sum;
  }

  AVTXContext* fContext = nullptr;
  av_tx_fn fRun = nullptr;
  const TAlignedFloats fIn = aligned_floats(kWindow);
  const TAlignedFloats fOut = aligned_floats(2 * kBins);
  std::array<float, kWindow> fHann;
  std::array<float, kBins> fPower;
  const std::vector<TBand> fBands = make_bands();
};

TSoundColumns::TSoundColumns(int64 firstSample, TTaker take)
    : fTake(std::move(take)), fTransform(std::make_unique<TTransform>()) {
  constexpr auto kHopSamples = static_cast<int64>(kHop);
  if (firstSample <= 0) {
    fSamples.resize(kBefore);
    return;
  }
  fFirstColumn = (firstSample + static_cast<int64>(kBefore) + kHopSamples - 1) / kHopSamples;
  fSkip = static_cast<size_t>(fFirstColumn * kHopSamples - static_cast<int64>(kBefore) - firstSample);
}

TSoundColumns::~TSoundColumns() = default;

TSoundColumn TSoundColumns::Analyse(const float* window) {
  TSoundColumn column;
  fTransform->BandPowers(window, &column.levelsDb);
  const float silence = std::pow(10.0F, kSilenceDb / 10);
  for (float& level : column.levelsDb) level = 10 * std::log10(std::max(level, silence));
  column.peak = 0;
  for (size_t i = kBefore; i < kBefore + kHop; ++i) column.peak = std::max(column.peak, std::abs(window[i]));
  return column;
}

void TSoundColumns::TakeComplete(size_t columns) {
  for (size_t i = 0; i < columns; ++i) fTake(Analyse(fSamples.data() + i * kHop));
  fSamples.erase(fSamples.begin(), fSamples.begin() + static_cast<std::ptrdiff_t>(columns * kHop));
}

void TSoundColumns::Add(std::span<const float> samples) {
  const size_t skipped = std::min(fSkip, samples.size());
  fSkip -= skipped;
  for (const float sample : samples.subspan(skipped))
    fSamples.push_back(std::isfinite(sample) ? std::clamp(sample, -kLoudest, kLoudest) : 0);
  if (fSamples.size() >= kWindow) TakeComplete((fSamples.size() - kWindow) / kHop + 1);
}

void TSoundColumns::Finish() {
  if (fSkip > 0 || fSamples.size() <= kBefore) return;
  const size_t columns = (fSamples.size() - kBefore + kHop - 1) / kHop;
  fSamples.resize((columns - 1) * kHop + kWindow);
  TakeComplete(columns);
}
