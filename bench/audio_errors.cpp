#include "bench/audio_errors.h"

#include "bench/audio_signal.h"
#include "demo/locate_sound.h"
#include "demo/sink_recorder.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace {

constexpr size_t kNoiseWindow = 2048;
constexpr size_t kSpliceWindow = 384;
constexpr double kNoiseRangeSec = 0.15;
constexpr double kSureLikeness = 0.5;
constexpr double kClickReachUs = 60'000; // clicks are 130 ms apart at least
constexpr double kLongestStepSec = 0.1;  // a longer step between two answers is a seek
constexpr double kNearMs = 3;

double sample_at(const THeard& heard, double us) {
  return (us - static_cast<double>(heard.startUs)) * TSinkRecorder::kRate / 1e6;
}

/** The middle of the last window of sound at or before `at`. */
double last_sounding(const THeard& heard, double at, size_t windowSize) {
  auto last = static_cast<size_t>(std::clamp(at, 0.0, static_cast<double>(heard.samples.size() - 1)));
  while (last > 0 && std::abs(heard.samples[last]) < 1e-3F) --last;
  return static_cast<double>(last) - static_cast<double>(windowSize) / 2;
}

/** The track's moment that was heard when the probe was taken. */
std::optional<double> heard_sec(const TProbe& probe, const THeard& heard, const std::vector<float>& track,
                                size_t windowSize) {
  double middle = sample_at(heard, static_cast<double>(probe.atUs));
  double afterSec = 0;
  if (probe.frozen) {
    middle = last_sounding(heard, middle, windowSize);
    afterSec = static_cast<double>(windowSize) / 2 / TSinkRecorder::kRate;
  }
  if (middle < 0) return std::nullopt;
  const auto place = locate(track, heard.samples, static_cast<size_t>(middle),
                            {probe.positionSec - afterSec, kNoiseRangeSec, windowSize});
  return place && place->likeness >= kSureLikeness ? std::optional(place->seconds + afterSec) : std::nullopt;
}

/** When the source said it reached `positionSec`, each time it did. */
std::vector<double> said_at_us(const std::vector<TProbe>& probes, double positionSec) {
  std::vector<double> times;
  for (size_t i = 1; i < probes.size(); ++i) {
    const TProbe &before = probes[i - 1], &after = probes[i];
    const double step = after.positionSec - before.positionSec;
    if (before.positionSec > positionSec || positionSec >= after.positionSec || step > kLongestStepSec) continue;
    const double share = (positionSec - before.positionSec) / step;
    times.push_back(static_cast<double>(before.atUs) + share * static_cast<double>(after.atUs - before.atUs));
  }
  return times;
}

/** The position the source gave for moment `us`, between two of its answers. */
std::optional<double> said_sec(const std::vector<TProbe>& probes, double us) {
  const auto after = std::lower_bound(probes.begin(), probes.end(), us, [](const TProbe& probe, double at) {
    return static_cast<double>(probe.atUs) < at;
  });
  if (after == probes.begin() || after == probes.end()) return std::nullopt;
  const auto before = after - 1;
  const double step = after->positionSec - before->positionSec;
  if (step < 0 || step > kLongestStepSec) return std::nullopt;
  const double share = (us - static_cast<double>(before->atUs)) / static_cast<double>(after->atUs - before->atUs);
  return before->positionSec + share * step;
}

/** When the loudest click between two moments was heard. */
std::optional<double> click_heard_us(const THeard& heard, double firstUs, double lastUs) {
  const double first = std::max(0.0, sample_at(heard, firstUs)), last = std::max(0.0, sample_at(heard, lastUs));
  const auto middle = loudest_click(heard.samples, static_cast<size_t>(first), static_cast<size_t>(last));
  if (!middle) return std::nullopt;
  return static_cast<double>(heard.startUs) + static_cast<double>(*middle) * 1e6 / TSinkRecorder::kRate;
}

double quantile(const std::vector<double>& sorted, double share) {
  return sorted[static_cast<size_t>(share * static_cast<double>(sorted.size() - 1) + 0.5)];
}

double percent_near(const TErrors& errors, double middleMs) {
  const auto near =
      std::count_if(errors.ms.begin(), errors.ms.end(), [=](double ms) { return std::abs(ms - middleMs) <= kNearMs; });
  return 100.0 * static_cast<double>(near) / static_cast<double>(errors.ms.size() + errors.lost);
}

} // namespace

TErrors noise_errors(const std::vector<TProbe>& probes, const THeard& heard, bool stretched) {
  const auto track = timed_noise(kTrackSeconds);
  // Stretched sound jumps at each splice, so every probe tells; else neighbours tell the same.
  constexpr size_t kProbeCount = 400;
  const size_t step = std::max<size_t>(1, probes.size() / kProbeCount);
  TErrors errors;
  for (size_t i = 0; i < probes.size(); i += step) {
    if (const auto sec = heard_sec(probes[i], heard, track, stretched ? kSpliceWindow : kNoiseWindow))
      errors.ms.push_back((probes[i].positionSec - *sec) * 1000);
    else
      ++errors.lost;
  }
  std::sort(errors.ms.begin(), errors.ms.end());
  return errors;
}

TErrors click_errors(const std::vector<TProbe>& probes, const THeard& heard, double speed) {
  const double reachUs = kClickReachUs / std::max(1.0, speed);
  TErrors errors;
  for (const double clickSec : click_times(kTrackSeconds)) {
    for (const double saidUs : said_at_us(probes, clickSec)) {
      const auto heardUs = click_heard_us(heard, saidUs - reachUs, saidUs + reachUs);
      const auto sec = heardUs ? said_sec(probes, *heardUs) : std::nullopt;
      if (sec)
        errors.ms.push_back((*sec - clickSec) * 1000);
      else
        ++errors.lost;
    }
  }
  std::sort(errors.ms.begin(), errors.ms.end());
  return errors;
}

const char* const kErrorColumns = "probes  lost     mean   median       p1      p99    |p99|  %<3ms  %<3ms of mean";

std::string error_row(const TErrors& errors) {
  const size_t count = errors.ms.size() + errors.lost;
  if (errors.ms.empty()) return std::to_string(count) + " probes, none found in the track";
  std::vector<double> sizes;
  for (const double ms : errors.ms) sizes.push_back(std::abs(ms));
  std::sort(sizes.begin(), sizes.end());
  const double mean = std::accumulate(errors.ms.begin(), errors.ms.end(), 0.0) / static_cast<double>(errors.ms.size());
  char row[160];
  std::snprintf(row, sizeof row, "%6zu %5zu %8.2f %8.2f %8.2f %8.2f %8.2f %6.1f %6.1f", count, errors.lost, mean,
                quantile(errors.ms, 0.5), quantile(errors.ms, 0.01), quantile(errors.ms, 0.99), quantile(sizes, 0.99),
                percent_near(errors, 0), percent_near(errors, mean));
  return row;
}
