#pragma once

#include "platform/support/types.h"

#include <cstring>
#include <string>

/** A WAV file of silence, `halves` half seconds long. */
inline std::string silent_wav(uint32 halves = 1) {
  constexpr uint32 kRate = 8000;
  const uint32 bytes = halves * kRate; // two bytes per sample
  std::string wav("RIFF....WAVEfmt \x10\0\0\0\1\0\1\0........\2\0\x10\0data....", 44);
  const auto put = [&](size_t at, uint32 value) { std::memcpy(wav.data() + at, &value, 4); };
  put(4, 36 + bytes);
  put(24, kRate);
  put(28, kRate * 2);
  put(40, bytes);
  return wav + std::string(bytes, '\0');
}
