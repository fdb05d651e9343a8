#pragma once

#include "platform/support/types.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

/** When a line is sung. The only rule for it; the highlighted row of the editor, the lyrics display, the marks on the
    player's seek bar and the export all follow it: a line is sung at each of the well-formed tags that it begins with,
    moved by the first `[offset:ms]` header of the lyrics (a positive offset means earlier), but never before 0. */

/** The times of the tags that the line begins with, in ms, as written. Pure: any thread. */
std::vector<long> leading_times(const std::string& line);

/** The offset in ms, when the line is the header for it. Pure: any thread. */
std::optional<long> offset_header(const std::string& line);

/** Pure: any thread. */
long sung_at(long tagMs, long offsetMs);

/** The times of a list of lines, by row. One thread at a time. */
class TLineTimes {
public:
  void Clear();
  void Append(const std::string& line);
  void Change(int32 row, const std::string& line);

  bool HasTimes() const;
  /** When the row is sung first, in the order of its tags. */
  std::optional<int32> TimeOf(int32 row) const;
  /** The row that is being sung: of all rows the one whose time came last; of several with the same time the lowest on
      the screen. -1 before the first time. */
  int32 RowAt(int32 positionMs);
  /** All of them, sorted. */
  std::vector<int32> Times() const;

private:
  void Store(int32 row, const std::string& line);
  long Offset() const { return fOffsetsMs.empty() ? 0 : fOffsetsMs.begin()->second; }
  template <typename Visit>
  void ForEachTime(Visit visit) const;

  std::vector<int32> fFirstMs;                   // negative for a row without a tag
  std::map<int32, std::vector<long>> fFurtherMs; // of the few rows with several tags
  std::map<int32, long> fOffsetsMs;              // of the rows that are headers for it; the first one counts
  int32 fRow = -1;                               // the last answer of RowAt, valid from fFromMs up to fUntilMs
  int32 fFromMs = 0;
  int32 fUntilMs = 0;
};
