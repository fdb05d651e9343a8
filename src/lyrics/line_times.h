#pragma once

#include "platform/support/types.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

/** The one rule for when a line is sung, used for the highlighted row of the editor, the lyrics display, the marks on
    the player's seek bar and the export: a line is sung at each well-formed tag that it begins with, shifted by the
    first `[offset:ms]` header of the lyrics (a positive offset means earlier), but never before 0. */

/** The times of the tags that the line begins with, in ms, as written. Pure: any thread. */
std::vector<long> leading_times(const std::string& line);

/** The offset in ms, if the line is an offset header. Pure: any thread. */
std::optional<long> offset_header(const std::string& line);

/** Pure: any thread. */
long sung_at(long tagMs, long offsetMs);

/** The times of a list of lines, by row. One thread at a time. */
class TLineTimes {
public:
  void Clear();
  void Append(const std::string& line);
  void Change(int32 row, const std::string& line);

  int32 CountRows() const { return static_cast<int32>(fFirstMs.size()); }
  /** As written, without the offset; nothing for a row with no tag or several. */
  std::optional<int32> OnlyTagOf(int32 row) const;
  /** Of the header that counts. */
  long OffsetMs() const { return Offset(); }
  bool HasTimes() const;
  /** The time of the row's first tag. */
  std::optional<int32> TimeOf(int32 row) const;
  /** The row that is being sung: the one with the latest time up to the position; of several with that time, the last
      row. -1 before the first time. */
  int32 RowAt(int32 positionMs);
  /** All of them, sorted. */
  std::vector<int32> Times() const;

private:
  void Store(int32 row, const std::string& line);
  long Offset() const { return fOffsetsMs.empty() ? 0 : fOffsetsMs.begin()->second; }
  template <typename Visit>
  void ForEachTime(Visit visit) const;

  std::vector<int32> fFirstMs;                   // negative for a row without a tag
  std::map<int32, std::vector<long>> fFurtherMs; // further tags of the few rows with several
  std::map<int32, long> fOffsetsMs;              // of the offset headers, by row; the first counts
  int32 fRow = -1;                               // cached result of RowAt, valid from fFromMs up to fUntilMs
  int32 fFromMs = 0;
  int32 fUntilMs = 0;
};
