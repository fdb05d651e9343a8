#pragma once

#include "lyrics/tagged_text.h"

#include <optional>
#include <string>
#include <vector>

/** A line whose units (word_units.h) can be timed one by one. Tags that are not changed keep their bytes, and the text
    keeps all of its own. Where a tag is within a unit, another unit begins. The units stay the same until the line is
    read again. Pure: one thread at a time. */
class TTimedLine {
public:
  TTimedLine() = default;
  explicit TTimedLine(const std::string& line);

  std::string Line() const { return fLine.Line(); }
  /** Without any time tag. */
  const std::string& Text() const { return fLine.text; }
  /** The tags that it begins with. */
  const std::string& Lead() const { return fLine.lead; }

  size_t CountUnits() const { return fStarts.size(); }
  /** In bytes of the text; the end of the text for the unit after the last. */
  size_t StartOf(size_t unit) const { return unit < fStarts.size() ? fStarts[unit] : Text().size(); }
  std::string TextOf(size_t unit) const;
  /** The unit at that byte of the text. */
  size_t UnitAt(size_t byte) const;
  /** Of the unit's own tag; the first unit's may be the line's. */
  std::optional<long> TimeOf(size_t unit) const;
  /** Of a tag at the end of the line. */
  std::optional<long> EndMs() const;
  size_t CountTimed() const;
  /** The unit with the latest time up to that position, in a line sung at `startMs` (one of its own tags). Nothing
     before the first one and after the end. */
  std::optional<size_t> UnitSungAt(long positionMs, long startMs) const;
  /** The length of the text up to the end of that unit; after the end of the line all of it. */
  size_t BytesSungAt(long positionMs, long startMs) const;
  bool HasWordTimes() const { return !fLine.tags.empty(); }

  /** Times a unit, the first one by the tag of the line as `stamp` does. Not before the times in front of it; later
      ones that are before it are removed. */
  void Stamp(size_t unit, long timeMs, TTagForm lineForm, TWordForm wordForm);
  /** Sets the time at which the line ends. */
  void StampEnd(long timeMs, TWordForm form);
  /** Removes the time of a unit, but not the line's own tag, and the end of the unit. */
  void Clear(size_t unit);
  void ClearWordTimes() { fLine.tags.clear(); }
  void ClearLead() { fLine.lead.clear(); }

  /** Makes one unit of this and the next one. Returns false for the last one. */
  bool JoinWithNext(size_t unit);
  /** Lets a unit begin at that byte. Returns false where one begins, and at blanks. */
  bool SplitAt(size_t byte);

private:
  /** The position by the times of the line's first tag. */
  long AtFirst(long positionMs, long startMs) const { return positionMs - startMs + fLine.LineMs().value_or(startMs); }
  void FindUnits();
  bool IsBlankFrom(size_t byte, size_t end) const;
  /** The index of the unit's own tag, the last one at its start; the number of tags without one. */
  size_t TagOf(size_t unit) const;
  /** The index of the first tag behind the start of the unit. */
  size_t FirstTagAfter(size_t unit) const;
  void ReplaceText(size_t at, size_t length, std::string_view by);

  TTaggedText fLine;
  std::vector<size_t> fStarts;
};

/** Of the tags that the line begins with, the one that is sung at the position: the latest up to it. 0 without any. */
long sung_start(const std::string& line, long positionMs);
