#pragma once

#include "common/onset.h"

#include <optional>
#include <span>
#include <utility>
#include <vector>

/** Proposes better times for tags that were stamped by ear, from where sounds start in the song. Pure: any thread. */

struct TProposedTag {
  int32 line = 0;
  int32 fromMs = 0; // as it is
  int32 toMs = 0;   // where a sound clearly starts
  friend bool operator==(const TProposedTag&, const TProposedTag&) = default;
};

/** `lineTimes`: number and time of each tagged line; `onsets` ascending. `latenessMs`: by how much the user's stamps
   are known to be late. The tags may be somebody else's, so theirs is estimated from the song itself, beginning with
   that of the user; of a few tags it cannot be estimated, and nothing is proposed if the user's is unknown as well.
   Tags with no clear onset near them, and tags that are right already, are left out. The proposals are in the order of
   the tags; whichever of them are accepted, no tag passes another. */
std::vector<TProposedTag> propose_tags(std::span<const std::pair<int32, int32>> lineTimes,
                                       std::span<const TOnset> onsets, std::optional<int32> latenessMs);
