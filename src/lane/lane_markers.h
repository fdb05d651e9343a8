#pragma once

#include "lane/lane_range.h"

#include <span>
#include <string>
#include <vector>

/** The time tags around a line, as the lane shows them. Times are those of the song: the lyrics' offset is taken off.
    Pure: any thread. */

enum class TMarkerKind { kLine, kWord, kEnd };

struct TLaneMarker {
  TMarkerKind kind = TMarkerKind::kLine;
  int32 row = 0;
  size_t tag = 0; // of the line's well-formed tags, from 0
  int32 timeMs = 0;
  bool isMovable = false;      // of the selected line
  bool isWholeSeconds = false; // its form shows no hundredths
  std::string text;            // of the line or the word; empty at an end

  bool IsSame(const TLaneMarker& other) const { return row == other.row && tag == other.tag; }
  friend bool operator==(const TLaneMarker&, const TLaneMarker&) = default;
};

/** What the lane shows of the lyrics. */
struct TLaneLyrics {
  std::span<const std::string> lines;
  int32 row = -1;    // the selected one, whose tags can be moved
  int32 around = -1; // another one, whose neighbours are shown as well
  long offsetMs = 0;
};

/** The tags of the rows around both, by time; of equal ones those of the upper row, and the left ones, first. */
std::vector<TLaneMarker> markers_of(const TLaneLyrics& lyrics);

/** From 1 s before the selected line to 1 s after the start of the next one. Of a line without a tag, around the place
    between its neighbours. */
TLaneRange range_of_line(const TLaneLyrics& lyrics);
