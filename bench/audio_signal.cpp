#include "bench/audio_signal.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <numeric>
#include <random>

namespace {

constexpr double kClickSeconds = 0.003;

/** Two equal one-pole low passes in a row. */
class TSoftener {
public:
  explicit TSoftener(double cutHz) : fStep(1 - std::exp(-2 * M_PI * cutHz / kSignalRate)) {}
  double Next(double in) {
    fFirst += fStep * (in - fFirst);
    fSecond += fStep * (fFirst - fSecond);
    return fSecond;
  }

private:
  double fStep, fFirst = 0, fSecond = 0;
};

template <typename T>
void put(std::string& out, T value) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  out.append(bytes, sizeof value);
}

std::string wav_header(uint32_t byteCount) {
  std::string head = "RIFF";
  put<uint32_t>(head, 36 + byteCount);
  head += "WAVEfmt ";
  put<uint32_t>(head, 16);
  put<uint16_t>(head, 1); // PCM
  put<uint16_t>(head, 1); // channels
  put<uint32_t>(head, kSignalRate);
  put<uint32_t>(head, kSignalRate * 2);
  put<uint16_t>(head, 2);
  put<uint16_t>(head, 16);
  head += "data";
  put<uint32_t>(head, byteCount);
  return head;
}

} // namespace

std::vector<float> timed_noise(double seconds) {
  std::vector<float> samples(static_cast<size_t>(seconds * kSignalRate));
  uint64_t state = 20261121;
  TSoftener soft(3000);
  for (float& sample : samples) {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    const double white = static_cast<double>(state >> 40) / (1 << 23) - 1;
    sample = static_cast<float>(0.7 * soft.Next(white));
  }
  return samples;
}

std::vector<double> click_times(double seconds) {
  std::vector<double> times;
  std::minstd_rand random(11);
  for (double at = 0.3; at < seconds - 0.3; at += 0.130 + 0.170 * (random() % 1000) / 1000.0) times.push_back(at);
  return times;
}

std::vector<float> click_track(double seconds) {
  const auto noise = timed_noise(seconds);
  std::vector<float> samples(noise.size());
  const auto half = static_cast<size_t>(kClickSeconds / 2 * kSignalRate);
  for (const double at : click_times(seconds)) {
    const auto middle = static_cast<size_t>(std::lround(at * kSignalRate));
    for (size_t i = middle - half; i < middle + half; ++i) samples[i] = noise[i];
  }
  return samples;
}

bool write_wav(const std::string& path, const std::vector<float>& samples) {
  std::string bytes = wav_header(static_cast<uint32_t>(samples.size() * 2));
  for (const float sample : samples) put(bytes, static_cast<int16_t>(std::lround(sample * 32767)));
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return file.flush().good();
}

std::optional<size_t> loudest_click(std::span<const float> heard, size_t first, size_t last) {
  const auto size = static_cast<size_t>(kClickSeconds * kSignalRate);
  if (first + size > last || last > heard.size()) return std::nullopt;
  float best = 1e-4F * static_cast<float>(size);
  std::optional<size_t> middle;
  for (size_t at = first; at + size <= last; ++at) {
    const float power = std::inner_product(heard.begin() + at, heard.begin() + at + size, heard.begin() + at, 0.0F);
    if (power <= best) continue;
    best = power;
    middle = at + size / 2;
  }
  return middle;
}
