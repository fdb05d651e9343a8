#pragma once

#include "platform/app/messenger.h"

#include <algorithm>
#include <vector>

/** What other processes may send to one address: the looper and the allow-list of codes. Everything else that comes is
    refused before any handler sees it. */
struct LetterOffer {
  BMessenger target;
  std::vector<uint32> codes;

  bool Takes(uint32 code) const { return std::ranges::find(codes, code) != codes.end(); }
};
