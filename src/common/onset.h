#pragma once

#include "platform/support/types.h"

/** A moment at which a sound starts in a song: a note, a drum, a syllable. */
struct TOnset {
  int32 timeMs = 0;
  uint8 strength = 0; // how clear it is, 255 the clearest
  friend bool operator==(const TOnset&, const TOnset&) = default;
};
