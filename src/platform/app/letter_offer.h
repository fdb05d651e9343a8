#pragma once

#include "platform/app/messenger.h"

#include <algorithm>
#include <vector>

/** The looper that receives messages from other processes at one address, and the allow-list of codes. Everything else
   is refused before any handler sees it. */
struct LetterOffer {
  BMessenger target;
  std::vector<uint32> codes;

  bool Takes(uint32 code) const { return std::ranges::find(codes, code) != codes.end(); }
};
