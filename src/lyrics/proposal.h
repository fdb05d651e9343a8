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

/** `lineTimes`: number and time of each tagged line, in order; `onsets` ascending. `latenessMs`: by how much the user's
    stamps are known to be late; if it is unknown, it is estimated from the song itself. Tags with no clear onset near
    them, and tags that are right already, are left out. Accepting all or any of the proposals keeps the order of
    ascending tags. */
std::vector<TProposedTag> propose_tags(std::span<const std::pair<int32, int32>> lineTimes,
                                       std::span<const TOnset> onsets, std::optional<int32> latenessMs);

/** How late the tags are, judged by the onsets before them; nothing if that cannot be told. */
std::optional<int32> lateness_by_onsets(std::span<const std::pair<int32, int32>> lineTimes,
                                        std::span<const TOnset> onsets);
