#pragma once

#include "platform/support/types.h"

#include <cstring>
#include <string>

/** Half a second of silence as a sound file. */
inline std::string silent_wav() {
  constexpr uint32 kRate = 8000;
  constexpr uint32 kBytes = kRate; // two bytes a sample, half a second
  std::string wav("RIFF....WAVEfmt \x10\0\0\0\1\0\1\0........\2\0\x10\0data....", 44);
  const auto put = [&](size_t at, uint32 value) { std::memcpy(wav.data() + at, &value, 4); };
  put(4, 36 + kBytes);
  put(24, kRate);
  put(28, kRate * 2);
  put(40, kBytes);
  return wav + std::string(kBytes, '\0');
}
