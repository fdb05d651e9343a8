#pragma once

#include <cstdint>
#include <string>
#include <vector>

/** A made-up song whose sung lines start at known times: a voice of formants and consonants over drums, bass and
   chords. The same seed gives the same song. */
struct TSyntheticSong {
  static constexpr int kRate = 44100;
  std::vector<float> samples;       // mono, -1 to 1
  std::vector<double> lineStartsMs; // where each line's first sound begins
};

TSyntheticSong make_synthetic_song(uint32_t seed, double seconds);
/** As a 16-bit WAV file. */
std::string wav_of(const TSyntheticSong& song);
