// Whether a song that follows another one of its album begins without a gap: a sine, split between two files, is played
// by the player's own source and recorded from the sound server. gapless_join.sh prepares the sound server.
#include "bench/audio_signal.h"
#include "demo/sink_recorder.h"
#include "player/sound/song_source.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <complex>
#include <cstdio>
#include <exception>
#include <numbers>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

constexpr double kHz = 50; // a period is longer than any gap that is not obvious, and windows are whole periods
constexpr double kRadians = 2 * std::numbers::pi * kHz / kSignalRate;
constexpr size_t kSplit = 2 * kSignalRate + 12345;
constexpr size_t kLength = 5 * kSignalRate;
constexpr size_t kWindow = kSignalRate / 2;

std::vector<float> sine(size_t from, size_t to) {
  std::vector<float> samples;
  for (size_t i = from; i < to; ++i)
    samples.push_back(static_cast<float>(0.5 * std::sin(kRadians * static_cast<double>(i))));
  return samples;
}

class TEvents : public TSongEvents {
public:
  void SongLoaded(int64, const TSongTags&) override { ++loaded; }
  void SongEnded(int64) override { hasEnded = true; }
  void SongFailed(int64, const std::string& reason) override { throw std::runtime_error(reason); }
  void SongJoined(int64, int64, int32) override { hasJoined = true; }
  std::atomic<int> loaded{0};
  std::atomic<bool> hasJoined{false};
  std::atomic<bool> hasEnded{false};
};

template <typename Condition>
void wait_until(const char* what, const Condition& condition) {
  for (int i = 0; i < 1000; ++i) {
    if (condition()) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  throw std::runtime_error(what);
}

/** Amplitude and phase of the sine over one window, as if it had begun with sample 0. */
std::complex<double> phasor(const std::vector<float>& heard, size_t from) {
  std::complex<double> sum = 0;
  for (size_t i = from; i < from + kWindow; ++i)
    sum += static_cast<double>(heard[i]) * std::polar(1.0, -kRadians * static_cast<double>(i));
  return sum * 2.0 / static_cast<double>(kWindow);
}

void report(const std::vector<float>& heard) {
  size_t first = 0;
  while (first < heard.size() && std::abs(heard[first]) < 0.05F) ++first;
  const size_t last = first + kLength - kSignalRate;
  if (last + kWindow > heard.size()) throw std::runtime_error("too little was heard");
  const std::complex<double> before = phasor(heard, first + kSignalRate / 2);
  const std::complex<double> after = phasor(heard, last - kWindow);
  double worst = 0;
  for (size_t i = first + kSignalRate / 2; i < last; ++i) {
    const double expected = (before * std::polar(1.0, kRadians * static_cast<double>(i))).real();
    worst = std::max(worst, std::abs(expected - static_cast<double>(heard[i])));
  }
  std::printf("gap %.2f samples; largest difference from the unbroken sine %.5f of its amplitude\n",
              std::arg(before / after) / kRadians, worst / std::abs(before));
}

void run(const std::string& folder) {
  const std::string first = folder + "/first.wav";
  const std::string second = folder + "/second.wav";
  if (!write_wav(first, sine(0, kSplit)) || !write_wav(second, sine(kSplit, kLength)))
    throw std::runtime_error("cannot write the songs");
  const TSinkRecorder recorder("heard.monitor");
  TEvents events;
  const auto source = make_mpv_source(&events);
  source->Load(first, false);
  wait_until("the first song is not loaded", [&] { return events.loaded == 1; });
  source->Follow(second);
  wait_until("the second song does not follow", [&] { return events.hasJoined.load(); });
  wait_until("the second song does not end", [&] { return events.hasEnded.load(); });
  recorder.WaitFor(clock_us() + 300'000);
  report(recorder.Samples());
}

} // namespace

int main(int argCount, char** args) {
  try {
    if (argCount != 2) throw std::runtime_error("usage: gapless_join FOLDER");
    run(args[1]);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "gapless_join: %s\n", failure.what());
    return 1;
  }
}
