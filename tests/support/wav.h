#pragma once

#include "platform/support/types.h"

#include <cmath>
#include <cstring>
#include <string>

/** A WAV file, mono, of 16-bit samples. */
inline std::string wav_of(const std::string& samples, uint32 rate) {
  const auto bytes = static_cast<uint32>(samples.size());
  std::string wav("RIFF....WAVEfmt \x10\0\0\0\1\0\1\0........\2\0\x10\0data....", 44);
  const auto put = [&](size_t at, uint32 value) { std::memcpy(wav.data() + at, &value, 4); };
  put(4, 36 + bytes);
  put(24, rate);
  put(28, rate * 2);
  put(40, bytes);
  return wav + samples;
}

/** A WAV file of silence, `halves` half seconds long. */
inline std::string silent_wav(uint32 halves = 1) {
  constexpr uint32 kRate = 8000;
  return wav_of(std::string(halves * size_t{kRate}, '\0'), kRate);
}

/** A WAV file with a tone of 1 kHz, at half of full scale, in the last 100 ms of every second. */
inline std::string beeping_wav(uint32 seconds) {
  constexpr uint32 kRate = 16000;
  std::string samples;
  for (uint32 i = 0; i < seconds * kRate; ++i) {
    const bool isOn = i % kRate >= kRate * 9 / 10;
    const auto sample = static_cast<int16>(isOn ? 16384 * std::sin(i * 2 * 3.14159265358979 / 16) : 0);
    samples.append(reinterpret_cast<const char*>(&sample), 2);
  }
  return wav_of(samples, kRate);
}
