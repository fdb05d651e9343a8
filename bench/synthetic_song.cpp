#include "bench/synthetic_song.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <random>

namespace {

constexpr double kRate = TSyntheticSong::kRate;
using TTrack = std::vector<float>;
using TChance = std::mt19937;

/** Not the standard library's distributions, which differ between libraries. */
double uniform(TChance& chance, double least, double most) {
  return least + (most - least) * chance() / 4294967296.0;
}
double gaussian(TChance& chance, double deviation) {
  const double length = std::sqrt(-2 * std::log(uniform(chance, 1e-9, 1)));
  return deviation * length * std::cos(uniform(chance, 0, 2 * std::numbers::pi));
}
size_t choice(TChance& chance, size_t count) {
  return std::min(static_cast<size_t>(uniform(chance, 0, static_cast<double>(count))), count - 1);
}

size_t sample_at(double seconds) {
  return static_cast<size_t>(std::max(0.0, seconds) * kRate);
}

/** Rises and falls linearly; times in seconds. */
double envelope(double now, double length, double rise, double fall) {
  return std::clamp(std::min(now / rise, (length - now) / fall), 0.0, 1.0);
}

void add(TTrack* track, double start, double length, auto&& sound) {
  const size_t first = sample_at(start);
  const size_t count = std::min(sample_at(length), track->size() - std::min(first, track->size()));
  for (size_t i = 0; i < count; ++i) (*track)[first + i] += static_cast<float>(sound(static_cast<double>(i) / kRate));
}

/** White noise through a resonance. */
class TNoise {
public:
  TNoise(TChance* chance, double centreHz, double widthHz) : fChance(chance) {
    const double radius = std::exp(-std::numbers::pi * widthHz / kRate);
    fA = 2 * radius * std::cos(2 * std::numbers::pi * centreHz / kRate);
    fB = -radius * radius;
    fGain = std::sqrt(1 - radius);
  }
  double Next() {
    const double value = fGain * uniform(*fChance, -1, 1) + fA * fLast + fB * fBefore;
    fBefore = fLast;
    return fLast = value;
  }

private:
  TChance* fChance;
  double fA, fB, fGain;
  double fLast = 0, fBefore = 0;
};

constexpr std::array<std::array<double, 3>, 6> kVowels{
    {{730, 1090, 2440}, {530, 1840, 2480}, {270, 2290, 3010}, {570, 840, 2410}, {300, 870, 2240}, {640, 1190, 2390}}};
constexpr std::array<double, 3> kNasal{250, 1000, 2200};

double formant_gain(const std::array<double, 3>& formants, double hz) {
  double gain = 0.02;
  for (size_t i = 0; i < 3; ++i) {
    const double distance = (hz - formants[i]) / (60 + 30.0 * static_cast<double>(i));
    gain += std::pow(0.5, static_cast<double>(i)) / (1 + distance * distance);
  }
  return gain;
}

void add_voiced(TTrack* track, double start, double length, double rise, double fall, double pitch, double gain,
                const std::array<double, 3>& formants) {
  for (int harmonic = 1; harmonic * pitch < 5000; ++harmonic) {
    const double strength = gain * formant_gain(formants, harmonic * pitch) / std::sqrt(harmonic);
    add(track, start, length, [&](double now) {
      const double vibrato = 0.01 * pitch / 5.5 * (1 - std::cos(5.5 * now)) * std::min(1.0, now * 4);
      const double phase = 2 * std::numbers::pi * harmonic * (pitch * now + vibrato);
      return strength * envelope(now, length, rise, fall) * std::sin(phase);
    });
  }
}

void add_noise(TTrack* track, TChance* chance, double start, double length, double rise, double hz, double gain) {
  TNoise noise(chance, hz, hz / 3);
  add(track, start, length, [&](double now) { return gain * envelope(now, length, rise, 0.01) * noise.Next(); });
}

/** One syllable: a consonant and a vowel. */
void sing_syllable(TTrack* track, TChance* chance, double start, double length, double pitch) {
  const auto& vowel = kVowels[choice(*chance, kVowels.size())];
  double at = start;
  double rise = 0.008;
  switch (choice(*chance, 5)) {
  case 0: // none
    rise = uniform(*chance, 0.015, 0.05);
    break;
  case 1: // plosive
    add_noise(track, chance, at, 0.015, 0.001, uniform(*chance, 1500, 4500), 0.6);
    at += uniform(*chance, 0.015, 0.05);
    break;
  case 2: { // fricative
    const double hiss = uniform(*chance, 0.05, 0.12);
    add_noise(track, chance, at, hiss + 0.01, uniform(*chance, 0.01, 0.03), uniform(*chance, 2500, 7500), 0.25);
    at += hiss;
    break;
  }
  case 3: { // nasal
    const double hum = uniform(*chance, 0.04, 0.09);
    add_voiced(track, at, hum + 0.01, 0.012, 0.01, pitch, 0.3, kNasal);
    at += hum;
    break;
  }
  default: // breath
    add_noise(track, chance, at, 0.06, 0.015, uniform(*chance, 900, 2000), 0.12);
    at += 0.045;
    rise = 0.02;
  }
  add_voiced(track, at, std::max(length - (at - start), 0.08), rise, 0.04, pitch, 0.5, vowel);
}

/** Where the first 2 ms are louder than a fortieth of the loudest 2 ms. */
double first_sound(const TTrack& track, double from, double to) {
  constexpr size_t kSpan = static_cast<size_t>(kRate / 500);
  std::vector<double> power;
  const size_t first = sample_at(from);
  for (size_t at = first; at + kSpan <= std::min(sample_at(to), track.size()); at += kSpan) {
    double sum = 0;
    for (size_t i = 0; i < kSpan; ++i) sum += track[at + i] * track[at + i];
    power.push_back(sum);
  }
  const double bound = *std::ranges::max_element(power) / 1600;
  const auto found = std::ranges::find_if(power, [bound](double one) { return one > bound; });
  return static_cast<double>(first + static_cast<size_t>(found - power.begin()) * kSpan) / kRate;
}

/** What differs from song to song. */
struct TStyle {
  double beat, pitch, singer, drums, chords;
  bool isPlucked, hasHats;
};

TStyle style_of(TChance& chance) {
  return {.beat = 60 / uniform(chance, 70, 160),
          .pitch = uniform(chance, 110, 330),
          .singer = uniform(chance, 0.8, 1.6),
          .drums = uniform(chance, 0, 0.6),
          .chords = uniform(chance, 0.05, 0.15),
          .isPlucked = choice(chance, 2) == 0,
          .hasHats = choice(chance, 3) > 0};
}

void play_drums(TTrack* track, TChance* chance, const TStyle& style, double seconds) {
  for (int half = 0; half * style.beat / 2 < seconds; ++half) {
    const double at = half * style.beat / 2 + std::abs(gaussian(*chance, 0.003));
    if (half % 4 == 0)
      add(track, at, 0.2, [&](double now) {
        return style.drums * std::exp(-now * 25) *
               std::sin(2 * std::numbers::pi * (50 * now + 3 * (1 - std::exp(-now * 40))));
      });
    if (half % 4 == 2) {
      TNoise snare(chance, 1800, 2500);
      add(track, at, 0.15, [&](double now) { return 0.5 * style.drums * std::exp(-now * 30) * snare.Next(); });
    }
    if (!style.hasHats) continue;
    TNoise hat(chance, 9000, 4000);
    add(track, at, 0.05, [&](double now) { return 0.3 * style.drums * std::exp(-now * 80) * hat.Next(); });
  }
}

void play_chords(TTrack* track, TChance* chance, const TStyle& style, double seconds) {
  constexpr std::array<double, 4> kRoots{1, 4.0 / 3, 3.0 / 2, 5.0 / 6};
  const double length = style.isPlucked ? style.beat : 4 * style.beat;
  for (int step = 0; step * length < seconds; ++step) {
    const double root = 130 * kRoots[static_cast<size_t>(style.isPlucked ? step / 4 : step) % 4];
    for (const double interval : {0.5, 1.0, 1.25, 1.5}) {
      const double hz = root * interval;
      const double at = step * length + std::abs(gaussian(*chance, 0.004));
      for (int harmonic = 1; harmonic <= 6; ++harmonic)
        add(track, at, length + 0.1, [&](double now) {
          const double shape = style.isPlucked ? std::exp(-now * (3 + harmonic)) * std::min(1.0, now / 0.003)
                                               : envelope(now, length + 0.1, 0.15, 0.2);
          return style.chords / harmonic * shape * std::sin(2 * std::numbers::pi * hz * harmonic * now);
        });
    }
  }
}

std::vector<double> sing(TTrack* track, TChance* chance, const TStyle& style, double seconds) {
  std::vector<double> starts;
  double beat = 4;
  while (true) {
    const double start = beat * style.beat + gaussian(*chance, 0.015);
    double at = start;
    const size_t syllables = 4 + choice(*chance, 7);
    if (start + 5 > seconds) return starts;
    for (size_t i = 0; i < syllables; ++i) {
      const double length = style.beat / (i % 3 == 2 ? 1 : 2) * uniform(*chance, 0.85, 1);
      const double pitch = style.pitch * std::pow(2, static_cast<double>(choice(*chance, 8)) / 12);
      sing_syllable(track, chance, at, length * uniform(*chance, 0.8, 1.0), pitch);
      at += length;
    }
    starts.push_back(first_sound(*track, start - 0.01, at) * 1000);
    beat = std::ceil((at / style.beat + uniform(*chance, 0.4, 3)) * 2) / 2;
  }
}

} // namespace

TSyntheticSong make_synthetic_song(uint32_t seed, double seconds) {
  TChance chance(seed);
  const TStyle style = style_of(chance);
  TSyntheticSong song;
  TTrack voice(sample_at(seconds));
  song.samples.resize(voice.size());
  song.lineStartsMs = sing(&voice, &chance, style, seconds);
  play_drums(&song.samples, &chance, style, seconds);
  play_chords(&song.samples, &chance, style, seconds);
  for (size_t i = 0; i < voice.size(); ++i) song.samples[i] += static_cast<float>(style.singer) * voice[i];
  float largest = 0;
  for (const float sample : song.samples) largest = std::max(largest, std::abs(sample));
  for (float& sample : song.samples) sample *= 0.85F / largest;
  return song;
}

std::string wav_of(const TSyntheticSong& song) {
  const auto bytes = static_cast<uint32_t>(song.samples.size() * 2);
  std::string wav("RIFF\0\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x44\xac\0\0\x88\x58\1\0\2\0\x10\0data\0\0\0\0", 44);
  const uint32_t rest = bytes + 36;
  std::memcpy(wav.data() + 4, &rest, 4);
  std::memcpy(wav.data() + 40, &bytes, 4);
  for (const float sample : song.samples) {
    const auto value = static_cast<int16_t>(std::lround(sample * 32767));
    wav.append(reinterpret_cast<const char*>(&value), 2);
  }
  return wav;
}
