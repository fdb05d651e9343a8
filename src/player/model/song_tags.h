#pragma once

#include "platform/support/types.h"

#include <string>

/** Metadata of a song; a text is empty, and the duration 0, if unknown. */
struct TSongTags {
  std::string title;
  std::string artist;
  int32 durationMs = 0;

  bool operator==(const TSongTags&) const = default;
};
